// Static exchange evaluation: the material outcome of the capture sequence a move starts on
// its target square, each side recapturing with its least valuable piece and free to stop.
// Works on a copy of the occupancy, so pieces behind a capturer join in as they are uncovered.
#include "board/chess_board.h"

#include <algorithm>

namespace {

constexpr int SEE_VALUE[8] = {0, 100, 325, 325, 500, 975, 5000, 0};
// A king recapture that leaves it attacked is illegal; this penalty keeps it from being
// chosen, since no capture on the square can win back a king's worth.
constexpr int KING_EXPOSED = 5000;
// Each step of the sequence uses up a different piece, so no sequence has more steps than
// the board has squares.
constexpr int MAX_EXCHANGE = 66;

// The sliders of both colours, by the lines they move along, gathered once per exchange.
struct Sliders {
    Bitboard diagonal, line;
};

Bitboard attackersTo(const Position& p, const Occupancy& occ, const Sliders& sliders, Square s) {
    const Bitboard knights   = p.bbPiece[WHITE][KNIGHT] | p.bbPiece[BLACK][KNIGHT];
    const Bitboard kings     = p.bbPiece[WHITE][KING] | p.bbPiece[BLACK][KING];
    const Bitboard attackers = (pawnAttack[BLACK][s] & p.bbPiece[WHITE][PAWN]) |
                               (pawnAttack[WHITE][s] & p.bbPiece[BLACK][PAWN]) |
                               (knightAttack[s] & knights) |
                               (occ.bishopAttacks(s) & sliders.diagonal) |
                               (occ.rookAttacks(s) & sliders.line) | (kingAttack[s] & kings);
    return attackers & occ.all;
}

// After a capturer of `kind` has left its square, the sliders behind it on its line to the
// target join the attackers; pieces already used are no longer in the occupancy.
Bitboard addXRays(const Occupancy& occ, const Sliders& sliders, Bitboard attackers, Piece kind,
                  Square target) {
    if (kind == PAWN || kind == BISHOP || kind >= QUEEN)
        attackers |= occ.bishopAttacks(target) & sliders.diagonal;
    if (kind == ROOK || kind >= QUEEN)
        attackers |= occ.rookAttacks(target) & sliders.line;
    return attackers & occ.all;
}

// The least valuable piece of `side` among the attackers, or EMPTY. Most exchanges end
// with a side that has nothing left, so that is asked before any kind is.
Piece cheapestAttacker(const Position& p, Bitboard attackers, Color side, Square& from) {
    if (!(attackers & p.bbColorPiece[side]))
        return EMPTY;
    for (int kind = PAWN; kind <= KING; ++kind)
        if (const Bitboard b = attackers & p.bbPiece[side][kind]) {
            from = lowestSquare(b);
            return Piece(kind);
        }
    return EMPTY;
}

} // namespace

int ChessBoard::see(Move m) const {
    const Square from = moveFrom(m), to = moveTo(m);
    const Piece promotion = movePromotion(m);
    const Color us        = (bbColorPiece[WHITE] & bit(from)) ? WHITE : BLACK;
    Occupancy occ         = occupancy();
    occ.remove(from);
    // The pawn taken en passant leaves a square off the target's lines open too.
    if (isEnPassant(m) && to >= 8 && to < 56)
        occ.remove(enPassantVictim(us, to));
    const Sliders sliders = {diagonalSliders(WHITE) | diagonalSliders(BLACK),
                             lineSliders(WHITE) | lineSliders(BLACK)};
    Bitboard attackers    = attackersTo(*this, occ, sliders, to);
    if (!attackers)
        return promotion ? SEE_VALUE[promotion] - 100 : SEE_VALUE[moveCaptured(m)];

    int gain[MAX_EXCHANGE];
    int depth = 0;
    gain[0]   = SEE_VALUE[moveCaptured(m)] + (promotion ? SEE_VALUE[promotion] - 100 : 0);
    // Nothing can take back: the first capture is the whole exchange.
    if (!(attackers & bbColorPiece[opponent(us)]))
        return gain[0];
    Piece onSquare = promotion ? promotion : movePiece(m);
    Color side     = opponent(us);
    Square square  = 0;
    while (depth + 1 < MAX_EXCHANGE) {
        const Piece kind = cheapestAttacker(*this, attackers, side, square);
        if (kind == EMPTY)
            break;
        ++depth;
        gain[depth] = SEE_VALUE[onSquare] - gain[depth - 1];
        occ.remove(square);
        attackers = addXRays(occ, sliders, attackers, kind, to);
        // A king may only take last, when nothing of the other side can take it back.
        if (kind == KING && (attackers & bbColorPiece[opponent(side)])) {
            gain[depth] -= KING_EXPOSED;
            break;
        }
        onSquare = kind;
        side     = opponent(side);
    }
    // Either side may stop capturing when going on would lose: fold from the end.
    for (; depth > 0; --depth)
        gain[depth - 1] = -std::max(-gain[depth - 1], gain[depth]);
    return gain[0];
}
