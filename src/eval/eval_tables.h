// The evaluation's numbers: weights, piece-square tables, tropism and passed-pawn rows, and
// the pawn-span masks. Everything is built at compile time from the tables as a chess player
// reads them (White's view, rank 8 on top); the terms that use them live in the eval files.
#pragma once

#include "board/types.h"

#include <array>
#include <cstdint>

// Weights in centipawns.
constexpr int BISHOP_PAIR         = 50;
constexpr int DOUBLED_PAWN        = 10;
constexpr int ISOLATED_PAWN       = 20;
constexpr int BACKWARD_PAWN       = 10;
constexpr int ROOK_OPEN_FILE      = 15;
constexpr int ROOK_HALF_OPEN_FILE = 10;
constexpr int ROOK_ON_SEVENTH     = 20;
constexpr int QUEEN_ON_SEVENTH    = 10;
constexpr int EARLY_QUEEN         = 20;
constexpr int KING_RING_ATTACK    = 10;
constexpr int BLOCKED_CENTRE_PAWN = 20;
constexpr int TRAPPED_BISHOP      = 50;
constexpr int SHUT_IN_ROOK        = 50;
// Positional terms rarely move the score by more than this, so a material balance further
// than this outside the window decides the node without them.
constexpr int LAZY_MARGIN = 200;

// Square s seen from colour c: White's squares as they are, Black's with the rank flipped,
// so one table written for White serves both colours.
constexpr Square relativeSquare(Color c, Square s) {
    return c == WHITE ? s : s ^ 56;
}
constexpr int relativeRank(Color c, int rank) {
    return c == WHITE ? rank : 7 - rank;
}

// Stages 0 and 1 (opening, middlegame) read the early tables, 2 and 3 the late ones.
constexpr int tableStage(int gameStage) {
    return gameStage >= 2 ? 1 : 0;
}

using PrintedTable = std::array<std::int8_t, 64>; // rank 8 first, files a-h left to right
using SquareTable  = std::array<std::array<std::int8_t, 64>, 2>; // [colour][square]

namespace eval_detail {

// clang-format off
constexpr PrintedTable KNIGHT_EARLY = {
    -32, -24, -10, -10, -10, -10, -24, -32,
    -24,  -8,   0,   0,   0,   0,  -8, -24,
    -10,   2,   2,   2,   2,   2,   2, -10,
    -10,   2,   4,   4,   4,   4,   2, -10,
    -10,   2,   8,   8,   8,   8,   2, -10,
    -10,   2,   8,   8,   8,   8,   2, -10,
    -24,  -8,   4,   4,   4,   4,  -8, -24,
    -32, -24, -10, -10, -10, -10, -24, -32,
};
// Knights and bishops share their late table.
constexpr PrintedTable MINOR_LATE = {
    -32, -16,  -8,  -8,  -8,  -8, -16, -32,
    -16,   0,   2,   2,   2,   2,   0, -16,
     -8,   2,   2,   4,   4,   2,   2,  -8,
     -8,   2,   4,   8,   8,   4,   2,  -8,
     -8,   2,   4,   8,   8,   4,   2,  -8,
     -8,   2,   2,   4,   4,   2,   2,  -8,
    -16,   0,   2,   2,   2,   2,   0, -16,
    -32, -16,  -8,  -8,  -8,  -8, -16, -32,
};
constexpr PrintedTable KNIGHT_OUTPOST = {
      0,   0,   0,   0,   0,   0,   0,   0,
      0,   0,   0,   0,   0,   0,   0,   0,
      0,   0,  16,  32,  32,  16,   0,   0,
      0,   8,  16,  32,  32,  16,   8,   0,
      0,   8,  16,  16,  16,  16,   8,   0,
      0,   0,   0,   0,   0,   0,   0,   0,
      0,   0,   0,   0,   0,   0,   0,   0,
      0,   0,   0,   0,   0,   0,   0,   0,
};
constexpr PrintedTable BISHOP_EARLY = {
    -32, -16,  -8,  -8,  -8,  -8, -16, -32,
    -16,   2,   0,   0,   0,   0,   2, -16,
     -4,   2,   2,   2,   2,   2,   2,  -4,
     -4,   2,   4,   4,   4,   4,   2,  -4,
     -4,   2,   6,   6,   6,   6,   2,  -4,
     -4,   2,   6,   6,   6,   6,   2,  -4,
    -16,   2,   4,   4,   4,   4,   2, -16,
    -32, -16,   0,   0,   0,   0, -16, -32,
};
constexpr PrintedTable QUEEN_LATE = {
    -32, -24,  -2,  -2,  -2,  -2, -24, -32,
    -24,   0,   8,   8,   8,   8,   0, -24,
     -2,   8,   8,  16,  16,   8,   8,  -2,
     -2,   8,  16,  24,  24,  16,   8,  -2,
     -2,   8,  16,  24,  24,  16,   8,  -2,
     -2,   8,   8,  16,  16,   8,   8,  -2,
    -24,   0,   8,   8,   8,   8,   0, -24,
    -32, -24,  -2,  -2,  -2,  -2, -24, -32,
};
constexpr PrintedTable KING_LATE = {
    -32, -24, -16,   0,   0, -16, -24, -32,
    -24, -16,   0,   8,   8,   0, -16, -24,
    -16,   0,   8,  16,  16,   8,   0, -16,
      0,   8,  16,  32,  32,  16,   8,   0,
      0,   8,  16,  32,  32,  16,   8,   0,
    -16,   0,   8,  16,  16,   8,   0, -16,
    -24, -16,   0,   8,   8,   0, -16, -24,
    -32, -24, -16,   0,   0, -16, -24, -32,
};
constexpr std::array<std::int8_t, 8> ROOK_EARLY_RANK = {-4, -2, -1, 0, 0, -1, -2, -4};
constexpr std::array<std::int8_t, 8> KING_EARLY_FIRST_RANK = {0, -8, 32, -8, 0, -8, 32, -8};
// clang-format on

// A table whose every rank reads `rank`.
constexpr PrintedTable everyRank(const std::array<std::int8_t, 8>& rank) {
    PrintedTable t{};
    for (int s = 0; s < 64; ++s)
        t[s] = rank[s & 7];
    return t;
}
// A table reading `first` on the first rank and `elsewhere` on every other square.
constexpr PrintedTable firstRankOnly(const std::array<std::int8_t, 8>& first,
                                     std::int8_t elsewhere) {
    PrintedTable t{};
    for (int s = 0; s < 64; ++s)
        t[s] = s >= 56 ? first[s & 7] : elsewhere;
    return t;
}
constexpr std::array<std::int8_t, 8> fileRow(std::int8_t v) {
    return {v, v, v, v, v, v, v, v};
}

// The printed table turned into a lookup by colour and board square.
constexpr SquareTable bySquare(const PrintedTable& printed) {
    SquareTable t{};
    for (int c = BLACK; c <= WHITE; ++c)
        for (Square s = 0; s < 64; ++s)
            t[c][s] = printed[relativeSquare(Color(c), s) ^ 56];
    return t;
}

constexpr std::array<std::array<SquareTable, 7>, 2> buildPieceSquare() {
    std::array<std::array<SquareTable, 7>, 2> t{}; // [late][piece]; pawns stay 0
    t[0][KNIGHT] = bySquare(KNIGHT_EARLY);
    t[1][KNIGHT] = bySquare(MINOR_LATE);
    t[0][BISHOP] = bySquare(BISHOP_EARLY);
    t[1][BISHOP] = bySquare(MINOR_LATE);
    t[0][ROOK]   = bySquare(everyRank(ROOK_EARLY_RANK));
    t[0][QUEEN]  = bySquare(firstRankOnly(fileRow(-10), 0));
    t[1][QUEEN]  = bySquare(QUEEN_LATE);
    t[0][KING]   = bySquare(firstRankOnly(KING_EARLY_FIRST_RANK, -32));
    t[1][KING]   = bySquare(KING_LATE);
    return t;
}

// Squares on files f-1..f+1 (or only the neighbours) strictly ahead of s for colour c.
constexpr Bitboard spanAhead(Color c, Square s, bool ownFile) {
    Bitboard b = 0;
    for (Square t = 0; t < 64; ++t) {
        const int df = fileOf(t) - fileOf(s);
        if (df < -1 || df > 1 || (df == 0 && !ownFile))
            continue;
        if (relativeRank(c, rankOf(t)) > relativeRank(c, rankOf(s)))
            b |= bit(t);
    }
    return b;
}
constexpr std::array<std::array<Bitboard, 64>, 2> buildSpans(bool ownFile) {
    std::array<std::array<Bitboard, 64>, 2> t{};
    for (int c = BLACK; c <= WHITE; ++c)
        for (Square s = 0; s < 64; ++s)
            t[c][s] = spanAhead(Color(c), s, ownFile);
    return t;
}

} // namespace eval_detail

// [early 0 / late 1][piece][colour][square]
inline constexpr auto PIECE_SQUARE   = eval_detail::buildPieceSquare();
inline constexpr auto KNIGHT_OUTPOST = eval_detail::bySquare(eval_detail::KNIGHT_OUTPOST);

// An enemy pawn in the passed span could stop or capture the pawn; one in the outpost span
// could some day chase a knight away.
inline constexpr auto PASSED_SPAN  = eval_detail::buildSpans(true);
inline constexpr auto OUTPOST_SPAN = eval_detail::buildSpans(false);

// clang-format off
// King tropism by piece (knight to queen) and Chebyshev distance to the enemy king.
inline constexpr std::int8_t TROPISM[7][8] = {
    {}, {},
    {0, 30, 30, 20,  0, 0, 0, 0}, // knight
    {0, 20, 20, 10, 10, 0, 0, 0}, // bishop
    {0, 30, 20, 10, 10, 0, 0, 0}, // rook
    {0, 40, 30, 20, 10, 0, 0, 0}, // queen
    {},
};
// Passed-pawn bonus by game stage and the pawn's rank counted from its own side. A pawn
// on its own first or last rank (only an odd FEN puts one there) gets nothing.
inline constexpr std::int16_t PASSED_PAWN[4][8] = {
    {0,  0, 10, 20,  50,  80, 100, 0},
    {0,  0, 10, 20,  50,  80, 100, 0},
    {0, 10, 20, 40, 100, 160, 200, 0},
    {0, 10, 20, 40, 100, 160, 200, 0},
};
// Shelter penalty by the relative rank of the most advanced own pawn on a file, shifted by
// one so that "no pawn" (-1) has a slot. A pawn on the first rank (odd FEN) counts as a
// pawn at the king's side, like one on the second.
inline constexpr std::int8_t SHELTER_PENALTY[9] = {30, 0, 0, 20, 25, 25, 25, 25, 25};
// clang-format on
