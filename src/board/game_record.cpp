// The game itself, as opposed to the search's tentative moves: moves that are played stay on
// the history, the repetition stack and the game move list until taken back.
#include "board/chess_board.h"

void ChessBoard::resetGameRecord() {
    // The starting position is the first entry, so a line that returns to it is seen as a
    // repetition; nothing before it can be reached again.
    repetitionStack[0] = {hashKey, true};
    repetitionTop      = 1;
    gameMoveCount      = 0;
    takenCount[WHITE] = takenCount[BLACK] = 0;
    lastMove                              = NO_MOVE;
}

int ChessBoard::playGameMove(Move m) {
    if (historyCount >= std::uint32_t(GAME_PLY_LIMIT) || gameMoveCount >= GAME_PLY_LIMIT ||
        repetitionTop >= GAME_PLY_LIMIT)
        return 0;
    if (!makeMove(m)) {
        unmakeMove(m);
        return 0;
    }
    repetitionStack[repetitionTop++] = {hashKey, moveCaptured(m) != EMPTY};
    if (moveCaptured(m)) {
        Color loser                             = Color(sideToMove);
        takenPieces[loser][takenCount[loser]++] = std::uint8_t(moveCaptured(m));
    }
    gameMoves[gameMoveCount++] = m;
    lastMove                   = m;
    return 1;
}

int ChessBoard::takeBackGameMove() {
    if (gameMoveCount == 0 || historyCount == 0 || repetitionTop <= 1)
        return 0;
    Move m = history[historyCount - 1].move;
    unmakeMove(m);
    --repetitionTop;
    --gameMoveCount;
    if (moveCaptured(m))
        --takenCount[sideToMove ^ 1];
    lastMove = gameMoveCount ? gameMoves[gameMoveCount - 1] : NO_MOVE;
    return 1;
}
