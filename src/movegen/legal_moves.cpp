// The legal moves of a position for callers that only want to know them (the book, the
// game-file reader, the deepening's line checks), with the board left exactly as it was,
// the inCheck flag included. The search and perft make each move themselves: there the make
// is the work.
#include "board/chess_board.h"

int ChessBoard::generateLegalMoves(MoveEntry* list) {
    const int count = generatePseudoLegalMoves(list);
    int legal       = 0;
    for (int i = 0; i < count; ++i) {
        const Move m = list[i].move;
        if (makeMove(m))
            list[legal++] = list[i];
        unmakeMove(m);
    }
    return legal;
}

bool ChessBoard::isMoveValid(Move m) {
    MoveEntry list[MAX_GENERATED];
    const int count = generateLegalMoves(list);
    for (int i = 0; i < count; ++i)
        if (moveIdentity(list[i].move) == moveIdentity(m))
            return true;
    return false;
}
