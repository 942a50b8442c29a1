// The gives-check test's per-position squares and its slow case (en passant, castling,
// promotions). The fast case is inline in gives_check.h.
#include "movegen/gives_check.h"

#include "movegen/move_rules.h"

namespace {

void place(Occupancy& occ, Square s) {
    occ.all |= SquareMask[s];
    occ.r90 |= SquareMask[rot90[s]];
    occ.r45R |= SquareMask[rot45R[s]];
    occ.r45L |= SquareMask[rot45L[s]];
}

} // namespace

CheckSquares checkSquaresOf(const Position& p, bool enemyKingSafe) {
    const Color us   = p.side();
    const Color them = opponent(us);
    CheckSquares cs;
    cs.king                = p.kingSquare[them];
    cs.fromSquares[EMPTY]  = 0;
    cs.fromSquares[PAWN]   = pawnAttack[them][cs.king];
    cs.fromSquares[KNIGHT] = knightAttack[cs.king];
    cs.fromSquares[BISHOP] = p.bishopAttacks(cs.king);
    cs.fromSquares[ROOK]   = p.rookAttacks(cs.king);
    cs.fromSquares[QUEEN]  = cs.fromSquares[BISHOP] | cs.fromSquares[ROOK];
    cs.fromSquares[KING]   = kingAttack[cs.king];
    cs.discoverers         = loneBlockers(p, cs.king, us, us);
    cs.reliable            = enemyKingSafe || !p.isAttacked(cs.king, us);
    return cs;
}

bool givesCheckSpecial(const Position& p, Square king, Move m) {
    const Color us = p.side();
    Bitboard own[7];
    for (int piece = PAWN; piece <= KING; ++piece)
        own[piece] = p.bbPiece[us][piece];
    Occupancy occ     = p.occupancy();
    const Square from = moveFrom(m), to = moveTo(m);
    const Piece lands = movePromotion(m) ? movePromotion(m) : movePiece(m);
    occ.remove(from);
    own[movePiece(m)] &= ~bit(from);
    if (!(occ.all & bit(to)))
        place(occ, to);
    own[lands] |= bit(to);
    if (isEnPassant(m))
        occ.remove(squareAt(fileOf(to), rankOf(from)));
    if (isCastle(m)) {
        // The rook hops over the king: from the corner to the square the king crossed.
        const bool kingSide  = to > from;
        const Square rookOut = kingSide ? from + 3 : from - 4,
                     rookIn  = kingSide ? from + 1 : from - 1;
        occ.remove(rookOut);
        place(occ, rookIn);
        own[ROOK] ^= bit(rookOut) | bit(rookIn);
    }
    return attackedIn(occ, king, us, own);
}
