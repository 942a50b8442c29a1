// Attack questions beyond the plain "is this square attacked" of the position: the x-ray
// test of perft's king moves and the insufficient-material test of the evaluation's endgame
// draw.
#include "board/chess_board.h"

bool ChessBoard::isAttackedWithout(Square removed, Square square, Color by) const {
    Occupancy occ = occupancy();
    occ.remove(removed);
    return (pawnAttack[opponent(by)][square] & bbPiece[by][PAWN]) ||
           (knightAttack[square] & bbPiece[by][KNIGHT]) ||
           (occ.bishopAttacks(square) & diagonalSliders(by)) ||
           (occ.rookAttacks(square) & lineSliders(by)) || (kingAttack[square] & bbPiece[by][KING]);
}

bool ChessBoard::cannotWin(Color colour) const {
    const Bitboard* own = bbPiece[colour];
    if (own[PAWN] || own[ROOK] || own[QUEEN])
        return false;
    const int bishops = popCount(own[BISHOP]), knights = popCount(own[KNIGHT]);
    return bishops <= 1 && knights <= 2 && !(bishops && knights);
}
