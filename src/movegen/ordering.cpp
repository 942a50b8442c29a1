// Move ordering. For now: the hash move first, then captures by victim value.
#include "board/chess_board.h"

void ChessBoard::scoreMoves(MoveEntry* list, int count, Move hashMove, int) const {
    for (int i = 0; i < count; ++i) {
        const Move m  = list[i].move;
        list[i].score = m == hashMove ? 100000 : moveCaptured(m) ? 50000 + pieceValue[moveCaptured(m)] : 0;
    }
}

void ChessBoard::scoreCaptures(MoveEntry* list, int count, Move hashMove) const {
    scoreMoves(list, count, hashMove, 0);
}

int ChessBoard::see(Move m) const { return pieceValue[moveCaptured(m)]; }
