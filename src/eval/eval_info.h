// What one evaluation leaves behind for later readers in the same node (the attack maps of
// both colours and the pawn data), and the per-group sums the evaluation adds up.
#pragma once

#include "board/types.h"

#include <cstdint>

// Pawn ranks are kept per file with a sentinel file on either side, so the neighbours of
// files a and h can be read without a test: file f lives at index f + 1.
constexpr int PAWN_FILE_SLOTS = 10;
constexpr int NO_WHITE_PAWN   = -1; // behind White's first rank
constexpr int NO_BLACK_PAWN   = 8;  // behind Black's first rank

struct EvalInfo {
    Bitboard attackMap[2];     // squares attacked by each colour's knights, bishops, rooks, queens
    Bitboard pawnAttackMap[2]; // squares attacked by each colour's pawns
    // The rank (0-7, board ranks) of each colour's most advanced pawn on a file: White's
    // highest, NO_WHITE_PAWN when none; Black's lowest, NO_BLACK_PAWN when none.
    std::int8_t pawnRank[2][PAWN_FILE_SLOTS];
};

// The evaluation's accumulators, in the order the diagnostic prints them.
enum EvalGroup : int {
    GROUP_MATERIAL = 0, // board material and the bishop pair
    GROUP_PLACEMENT,    // piece-square tables, outposts, rook and queen bonuses, early queen
    GROUP_MOBILITY,
    GROUP_SAFE_MOBILITY, // counted twice in the total
    GROUP_TROPISM,
    GROUP_SHELTER, // king shelter and attacks next to the king
    GROUP_DEVELOPMENT,
    GROUP_PAWNS,
    GROUP_COUNT
};

inline constexpr const char* evalGroupNames[GROUP_COUNT] = {
    "material", "placement", "mobility",    "safe-mobility",
    "tropism",  "shelter",   "development", "pawns",
};

// One (White, Black) pair of sums per group; the score is the sum of the differences.
struct EvalTerms {
    int sum[GROUP_COUNT][2];

    void add(EvalGroup g, Color c, int value) { sum[g][c] += value; }
    // White's view, safe mobility counted twice.
    int whiteScore() const {
        int score = 0;
        for (int g = 0; g < GROUP_COUNT; ++g)
            score += (g == GROUP_SAFE_MOBILITY ? 2 : 1) * (sum[g][WHITE] - sum[g][BLACK]);
        return score;
    }
};
