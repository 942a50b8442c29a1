// The phase-dependent king terms: the early-queen penalty, the king's piece-square table,
// and, while pieces are on the board, the pawn shelter and the attacks next to the king.
#include "eval/eval_tables.h"
#include "eval/eval_terms.h"

namespace {

constexpr Square D1 = 3;

// Shelter is counted only for a king still near its own first rank: White's king below h3
// (square 23), Black's above a6 (square 40). The two bounds are not mirror images (a3
// counts for White, a6 does not for Black). They stay so: every score, and with it the
// engine's play and the bench signature, depends on them.
constexpr bool kingNearHome(Color c, Square king) {
    return c == WHITE ? king < 23 : king > 40;
}

template <Color Us> int shelterPenalty(const EvalInfo& info, Square king) {
    int penalty    = 0;
    const int slot = fileOf(king) + 1;
    // A king on the a- or h-file has two shelter files: the sentinels stand for no file.
    for (int s = slot - 1; s <= slot + 1; ++s)
        if (s > 0 && s < PAWN_FILE_SLOTS - 1)
            penalty += SHELTER_PENALTY[relativeRank(Us, info.pawnRank[Us][s]) + 1];
    return penalty;
}

template <Color Us> void scoreKing(const Position& p, const EvalInfo& info, EvalTerms& terms) {
    const Square king     = p.kingSquare[Us];
    const Bitboard queens = p.bbPiece[Us][QUEEN];
    // A queen out before the minor pieces only gets chased around; a side without a queen
    // has nothing to bring out.
    if (p.gameStage == 0 && queens && !(queens & bit(relativeSquare(Us, D1))))
        terms.add(GROUP_PLACEMENT, Us, -EARLY_QUEEN);
    terms.add(GROUP_PLACEMENT, Us, PIECE_SQUARE[tableStage(p.gameStage)][KING][Us][king]);
    if (p.gameStage > 1)
        return;
    if (kingNearHome(Us, king))
        terms.add(GROUP_SHELTER, Us, -shelterPenalty<Us>(info, king));
    const int attacked = popCount(kingAttack[king] & info.attackMap[opponent(Us)]);
    terms.add(GROUP_SHELTER, Us, -KING_RING_ATTACK * attacked);
}

} // namespace

void scoreKings(const Position& p, const EvalInfo& info, EvalTerms& terms) {
    scoreKing<WHITE>(p, info, terms);
    scoreKing<BLACK>(p, info, terms);
}
