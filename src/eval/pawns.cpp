// Pawn data (the most advanced pawn of each colour on every file, the pawn attack maps) and
// the pawn-structure terms: doubled, isolated, backward and passed pawns. Everything but the
// passed pawns' worth depends on the pawns alone and comes from the pawn cache; the worth
// also depends on the stage and on what blocks the pawn, so it is counted afresh.
#include "board/side.h"
#include "eval/eval_tables.h"
#include "eval/eval_terms.h"

#include <algorithm>
#include <cstring>

namespace {

template <Color Us> void fillPawnData(Bitboard pawns, PawnEntry& e) {
    std::int8_t* ranks = e.pawnRank[Us];
    std::fill(ranks, ranks + PAWN_FILE_SLOTS, Us == WHITE ? NO_WHITE_PAWN : NO_BLACK_PAWN);
    for (Bitboard b = pawns; b;) {
        const Square s = popLowest(b);
        const int slot = fileOf(s) + 1, rank = rankOf(s);
        if (Us == WHITE ? rank > ranks[slot] : rank < ranks[slot])
            ranks[slot] = std::int8_t(rank);
    }
    e.pawnAttackMap[Us] = Us == WHITE ? ((pawns & ~FILE_A) << 7) | ((pawns & ~FILE_H) << 9)
                                      : ((pawns & ~FILE_A) >> 9) | ((pawns & ~FILE_H) >> 7);
}

// Ranks counted from Us's side, -1 where a file has no pawn of ours.
template <Color Us> void ownRanks(const PawnEntry& e, int* own) {
    for (int i = 0; i < PAWN_FILE_SLOTS; ++i)
        own[i] = relativeRank(Us, e.pawnRank[Us][i]);
}

// A neighbouring file whose most advanced pawn stands level with this one or a rank behind
// can step up to defend it.
bool supports(int neighbour, int rank) {
    return neighbour >= 0 && (neighbour == rank || neighbour == rank - 1);
}

// Doubled, isolated and backward pawns, and which pawns are passed.
template <Color Us> void pawnStructure(PawnEntry& e) {
    int own[PAWN_FILE_SLOTS];
    ownRanks<Us>(e, own);
    const Bitboard enemyPawns = e.pawns[opponent(Us)];
    int score                 = 0;
    e.passed[Us]              = 0;
    for (Bitboard b = e.pawns[Us]; b;) {
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
            e.passed[Us] |= bit(s);
    }
    e.structure[Us] = std::int16_t(score);
}

// The passed-pawn bonus: half of it is lost while an enemy piece blocks the pawn, and half
// is added again when a neighbour pawn can support it.
template <Color Us> int passedPawns(const Position& p, const PawnEntry& e) {
    int own[PAWN_FILE_SLOTS];
    ownRanks<Us>(e, own);
    const std::int16_t* bonuses = PASSED_PAWN[std::min<int>(p.gameStage, 3)];
    int score                   = 0;
    for (Bitboard b = e.passed[Us]; b;) {
        const Square s = popLowest(b);
        const int slot = fileOf(s) + 1, rank = relativeRank(Us, rankOf(s));
        const int bonus = bonuses[rank];
        score += bonus;
        if (rank < 7 && (p.bbColorPiece[opponent(Us)] & bit(Us == WHITE ? s + 8 : s - 8)))
            score -= bonus / 2;
        if (supports(own[slot - 1], rank) || supports(own[slot + 1], rank))
            score += bonus / 2;
    }
    return score;
}

const PawnEntry& pawnEntry(const Position& p, PawnCache& cache) {
    const Bitboard white = p.bbPiece[WHITE][PAWN], black = p.bbPiece[BLACK][PAWN];
    PawnEntry& e = cache.slot(white, black);
    if (e.pawns[WHITE] == white && e.pawns[BLACK] == black)
        return e;
    e.pawns[WHITE] = white;
    e.pawns[BLACK] = black;
    fillPawnData<WHITE>(white, e);
    fillPawnData<BLACK>(black, e);
    pawnStructure<WHITE>(e);
    pawnStructure<BLACK>(e);
    return e;
}

} // namespace

void scorePawns(const Position& p, PawnCache& cache, EvalInfo& info, EvalTerms& terms) {
    const PawnEntry& e = pawnEntry(p, cache);
    std::memcpy(info.pawnRank, e.pawnRank, sizeof info.pawnRank);
    info.pawnAttackMap[WHITE] = e.pawnAttackMap[WHITE];
    info.pawnAttackMap[BLACK] = e.pawnAttackMap[BLACK];
    terms.add(GROUP_PAWNS, WHITE, e.structure[WHITE] + passedPawns<WHITE>(p, e));
    terms.add(GROUP_PAWNS, BLACK, e.structure[BLACK] + passedPawns<BLACK>(p, e));
}
