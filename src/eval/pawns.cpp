// Pawn data (the most advanced pawn of each colour on every file, the pawn attack maps) and
// the pawn-structure terms: doubled, isolated, backward and passed pawns.
#include "eval/eval_tables.h"
#include "eval/eval_terms.h"

#include <algorithm>

namespace {

constexpr Bitboard FILE_A = 0x0101010101010101ull;
constexpr Bitboard FILE_H = FILE_A << 7;

template <Color Us> void fillPawnData(const Position& p, EvalInfo& info) {
    std::int8_t* ranks = info.pawnRank[Us];
    std::fill(ranks, ranks + PAWN_FILE_SLOTS, Us == WHITE ? NO_WHITE_PAWN : NO_BLACK_PAWN);
    const Bitboard pawns = p.bbPiece[Us][PAWN];
    for (Bitboard b = pawns; b;) {
        const Square s = popLowest(b);
        const int slot = fileOf(s) + 1, rank = rankOf(s);
        if (Us == WHITE ? rank > ranks[slot] : rank < ranks[slot])
            ranks[slot] = std::int8_t(rank);
    }
    info.pawnAttackMap[Us] = Us == WHITE ? ((pawns & ~FILE_A) << 7) | ((pawns & ~FILE_H) << 9)
                                         : ((pawns & ~FILE_A) >> 9) | ((pawns & ~FILE_H) >> 7);
}

// A neighbouring file whose most advanced pawn stands level with this one or a rank behind
// can step up to defend it.
bool supports(int neighbour, int rank) {
    return neighbour >= 0 && (neighbour == rank || neighbour == rank - 1);
}

// The passed-pawn bonus: half of it is lost while an enemy piece blocks the pawn, and half
// is added again when a neighbour pawn can support it.
template <Color Us>
int passedPawnValue(const Position& p, Square s, int rank, const int* own, int slot) {
    const int bonus = PASSED_PAWN[std::min<int>(p.gameStage, 3)][rank];
    int value       = bonus;
    if (rank < 7 && (p.bbColorPiece[opponent(Us)] & bit(Us == WHITE ? s + 8 : s - 8)))
        value -= bonus / 2;
    if (supports(own[slot - 1], rank) || supports(own[slot + 1], rank))
        value += bonus / 2;
    return value;
}

template <Color Us> int pawnStructure(const Position& p, const EvalInfo& info) {
    // Ranks counted from Us's side, -1 where a file has no pawn of ours.
    int own[PAWN_FILE_SLOTS];
    for (int i = 0; i < PAWN_FILE_SLOTS; ++i)
        own[i] = relativeRank(Us, info.pawnRank[Us][i]);
    const Bitboard enemyPawns = p.bbPiece[opponent(Us)][PAWN];
    int score                 = 0;
    for (Bitboard b = p.bbPiece[Us][PAWN]; b;) {
        const Square s = popLowest(b);
        const int slot = fileOf(s) + 1, rank = relativeRank(Us, rankOf(s));
        const int left = own[slot - 1], right = own[slot + 1];
        if (own[slot] > rank)
            score -= DOUBLED_PAWN;
        if (left < 0 && right < 0)
            score -= ISOLATED_PAWN;
        else if ((left < 0 || left > rank) && (right < 0 || right > rank))
            score -= BACKWARD_PAWN;
        if (!(enemyPawns & PASSED_SPAN[Us][s]))
            score += passedPawnValue<Us>(p, s, rank, own, slot);
    }
    return score;
}

} // namespace

void scorePawns(const Position& p, EvalInfo& info, EvalTerms& terms) {
    fillPawnData<WHITE>(p, info);
    fillPawnData<BLACK>(p, info);
    terms.add(GROUP_PAWNS, WHITE, pawnStructure<WHITE>(p, info));
    terms.add(GROUP_PAWNS, BLACK, pawnStructure<BLACK>(p, info));
}
