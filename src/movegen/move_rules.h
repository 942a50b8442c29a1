// The rules that both the generators (generate.cpp) and the perft counter (perft_leaves.cpp,
// gives_check.cpp) apply: the lone blocker on a slider's line to a king, the en-passant
// target a position really offers, and the conditions of castling. Each is written here once.
#pragma once

#include "board/position.h"
#include "board/side.h"

// Calls found(slider, blocker) for every slider of `sliderSide` that sees `king` along its
// line through exactly one piece, when that piece belongs to `blockerSide`: a pin when the
// king's side owns it, a possible discovered check when the slider's side does. `blocker` is
// the piece's bit. Inlined always, as perft asks it at every leaf.
template <class Found>
[[gnu::always_inline]] inline void forEachLoneBlocker(const Position& p, Square king,
                                                      Color sliderSide, Color blockerSide,
                                                      Found found) {
    Bitboard sliders =
        ((slidingAttack[king].rank[0] | slidingAttack[king].file[0]) & p.lineSliders(sliderSide)) |
        ((slidingAttack[king].diag45R[0] | slidingAttack[king].diag45L[0]) &
         p.diagonalSliders(sliderSide));
    while (sliders) {
        const Square slider    = popLowest(sliders);
        const Bitboard between = betweenMask[slider][king] & p.bbAllPiece;
        if (between && !(between & (between - 1)) && (between & p.bbColorPiece[blockerSide]))
            found(slider, between);
    }
}

inline Bitboard loneBlockers(const Position& p, Square king, Color sliderSide, Color blockerSide) {
    Bitboard all = 0;
    forEachLoneBlocker(p, king, sliderSide, blockerSide, [&](Square, Bitboard b) { all |= b; });
    return all;
}

// The king the position tracks. A FEN may place more than one: the others never move, so
// unmake can always put the tracked one back on its square.
inline Bitboard movingKing(const Position& p, Color us) {
    return p.bbPiece[us][KING] & bit(p.kingSquare[us]);
}

// The en-passant target, or -1 when no capture en passant can be made: the file must name
// an enemy pawn that really stands beside the target on an empty square, whatever a FEN said.
template <Color US> Square enPassantTarget(const Position& p) {
    using S = Side<US>;
    if (!p.epFile || !p.bbPiece[US][PAWN])
        return -1;
    const Square target = squareAt(p.epFile - 1, S::EN_PASSANT_RANK);
    const Square victim = target - S::FORWARD;
    if ((p.bbAllPiece & bit(target)) || !(p.bbPiece[S::THEM][PAWN] & bit(victim)))
        return -1;
    return target;
}

// Calls add(move) for each castling move of US, short first. Castling needs the right, the
// king and the rook on their squares (a FEN may grant rights that its pieces cannot use), an
// empty path, and the king's square and the two squares it crosses and lands on free of
// attack, which attacked(square) answers: a caller that already knows some of those answers
// gives them from what it knows.
template <Color US, class Attacked, class Add>
void forEachCastle(const Position& p, Attacked attacked, Add add) {
    using S               = Side<US>;
    constexpr Square home = S::KING_HOME;
    if (!(p.castleRights & (S::SHORT_RIGHT | S::LONG_RIGHT)) || !(movingKing(p, US) & bit(home)))
        return;
    const Bitboard rooks = p.bbPiece[US][ROOK];
    if ((p.castleRights & S::SHORT_RIGHT) && !(p.bbAllPiece & S::SHORT_PATH) &&
        (rooks & bit(home + 3)) && !attacked(home) && !attacked(home + 1) && !attacked(home + 2))
        add(S::SHORT_CASTLE);
    if ((p.castleRights & S::LONG_RIGHT) && !(p.bbAllPiece & S::LONG_PATH) &&
        (rooks & bit(home - 4)) && !attacked(home) && !attacked(home - 1) && !attacked(home - 2))
        add(S::LONG_CASTLE);
}
