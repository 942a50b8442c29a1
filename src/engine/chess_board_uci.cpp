// The console adapter's hooks that send the chosen move and read a command that arrives
// while the engine thinks.
#include "engine/chess_board_uci.h"

#include "engine/command_reader.h"
#include "engine/front_end.h"
#include "platform/send_command.h"

void ChessBoardUCI::sendMove() {
    if (dropSearchMove) {
        dropSearchMove = 0;
        moveDropped    = bestMove != NO_MOVE;
        return;
    }
    const bool uci = protocol == PROTOCOL_UCI;
    if (!uci && movesPerSession != 0)
        movesLeftInSession = movesLeftInSession == 1 ? movesPerSession : movesLeftInSession - 1;
    if (suiteMode)
        return;
    // A search with no move to offer (the game is over) answers with the null move under
    // UCI; under XBoard a move line would be taken as an illegal move, so none is sent.
    if (bestMove == NO_MOVE) {
        if (uci)
            sendCommand("bestmove 0000");
        return;
    }
    const char* word  = uci ? "bestmove" : "move";
    const Square from = moveFrom(bestMove), to = moveTo(bestMove);
    const Piece promotion = movePromotion(bestMove);
    if (promotion != EMPTY)
        sendCommand("%s %c%d%c%d%c", word, 'a' + fileOf(from), rankOf(from) + 1, 'a' + fileOf(to),
                    rankOf(to) + 1, "0pnbrqk"[promotion]);
    else
        sendCommand("%s %c%d%c%d", word, 'a' + fileOf(from), rankOf(from) + 1, 'a' + fileOf(to),
                    rankOf(to) + 1);
}

int ChessBoardUCI::readCommand() {
    return ::readCommand();
}
