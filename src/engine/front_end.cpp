// The front end's engine: its creation from the configuration file, its book and its end;
// and the move line the console adapter hands over when a search has played its move.
#include "engine/front_end.h"

#include "board/make_engine.h"
#include "board/trace.h"
#include "book/opening_book.h"
#include "platform/config.h"
#include "platform/send_command.h"

FrontEnd::FrontEnd(CommandSource commands) : source(commands) {}

FrontEnd::~FrontEnd() {
    destroyEngine();
}

void FrontEnd::createEngine() {
    createEngine(configInt("Engine", "Hash", 128));
}

void FrontEnd::createEngine(int hashMegabytes) {
    destroyEngine();
    board            = makeEngine<ChessBoardUCI>(hashMegabytes, *this);
    board->inputPoll = source.available;
    dropSearchMove = moveDropped = 0;
}

void FrontEnd::openConfiguredBook() {
    if (configInt("Engine", "Book", 0) != 1)
        return;
    char bookFile[256];
    configString("Engine", "BookFile", DEFAULT_BOOK_FILE, bookFile, sizeof bookFile);
    if (!board->openBook(bookFile))
        trace("no book : %s", bookFile);
}

void FrontEnd::destroyEngine() {
    if (!board)
        return;
    if (board->thinking) {
        trace("stop thinking");
        board->stopSearch = 1;
    }
    trace("free");
    board->releaseTables();
    trace("delete board");
    board.reset();
}

void FrontEnd::sendMove(ChessBoard& engine) {
    if (dropSearchMove) {
        dropSearchMove = 0;
        moveDropped    = engine.bestMove != NO_MOVE;
        return;
    }
    const bool uci = protocol == PROTOCOL_UCI;
    if (!uci && movesPerSession != 0)
        movesLeftInSession = movesLeftInSession == 1 ? movesPerSession : movesLeftInSession - 1;
    if (engine.suiteMode)
        return;
    // A search with no move to offer (the game is over) answers with the null move under
    // UCI; under XBoard a move line would be taken as an illegal move, so none is sent.
    const Move best = engine.bestMove;
    if (best == NO_MOVE) {
        if (uci)
            sendCommand("bestmove 0000");
        return;
    }
    char text[8];
    ChessBoard::moveToCoordinates(best, text);
    sendCommand("%s %s", uci ? "bestmove" : "move", text);
}
