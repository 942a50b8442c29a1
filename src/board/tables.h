// Board geometry shared by the whole process: square masks, leaper attacks, the direction
// table and the four rotated-bitboard sliding tables. Built once by initGeometry(); every
// other file only indexes them.
#pragma once

#include "board/types.h"

#include <array>

// clang-format off
// Rotated index maps: square s is stored at bit rotXX[s] of the matching rotated board.
constexpr int rot90[64] = {
    56, 48, 40, 32, 24, 16,  8,  0,   57, 49, 41, 33, 25, 17,  9,  1,
    58, 50, 42, 34, 26, 18, 10,  2,   59, 51, 43, 35, 27, 19, 11,  3,
    60, 52, 44, 36, 28, 20, 12,  4,   61, 53, 45, 37, 29, 21, 13,  5,
    62, 54, 46, 38, 30, 22, 14,  6,   63, 55, 47, 39, 31, 23, 15,  7,
};
// Diagonals in the a1-h8 direction, one after another (a8 alone first, then a7 b8, ...).
constexpr int rot45R[64] = {
    28, 36, 43, 49, 54, 58, 61, 63,
    21, 29, 37, 44, 50, 55, 59, 62,
    15, 22, 30, 38, 45, 51, 56, 60,
    10, 16, 23, 31, 39, 46, 52, 57,
     6, 11, 17, 24, 32, 40, 47, 53,
     3,  7, 12, 18, 25, 33, 41, 48,
     1,  4,  8, 13, 19, 26, 34, 42,
     0,  2,  5,  9, 14, 20, 27, 35,
};
// Diagonals in the a8-h1 direction: the same table with its ranks in reverse order.
constexpr int rot45L[64] = {
     0,  2,  5,  9, 14, 20, 27, 35,
     1,  4,  8, 13, 19, 26, 34, 42,
     3,  7, 12, 18, 25, 33, 41, 48,
     6, 11, 17, 24, 32, 40, 47, 53,
    10, 16, 23, 31, 39, 46, 52, 57,
    15, 22, 30, 38, 45, 51, 56, 60,
    21, 29, 37, 44, 50, 55, 59, 62,
    28, 36, 43, 49, 54, 58, 61, 63,
};
// Shifts that bring a square's 6-bit line occupancy down to bit 0 of a rotated board.
constexpr int shift90[64] = {
    57, 49, 41, 33, 25, 17,  9,  1,   57, 49, 41, 33, 25, 17,  9,  1,
    57, 49, 41, 33, 25, 17,  9,  1,   57, 49, 41, 33, 25, 17,  9,  1,
    57, 49, 41, 33, 25, 17,  9,  1,   57, 49, 41, 33, 25, 17,  9,  1,
    57, 49, 41, 33, 25, 17,  9,  1,   57, 49, 41, 33, 25, 17,  9,  1,
};
constexpr int shift45R[64] = {
    29, 36, 42, 47, 51, 54, 56, 57,
    22, 29, 36, 42, 47, 51, 54, 56,
    16, 22, 29, 36, 42, 47, 51, 54,
    11, 16, 22, 29, 36, 42, 47, 51,
     7, 11, 16, 22, 29, 36, 42, 47,
     4,  7, 11, 16, 22, 29, 36, 42,
     2,  4,  7, 11, 16, 22, 29, 36,
     1,  2,  4,  7, 11, 16, 22, 29,
};
constexpr int shift45L[64] = {
     1,  2,  4,  7, 11, 16, 22, 29,
     2,  4,  7, 11, 16, 22, 29, 36,
     4,  7, 11, 16, 22, 29, 36, 42,
     7, 11, 16, 22, 29, 36, 42, 47,
    11, 16, 22, 29, 36, 42, 47, 51,
    16, 22, 29, 36, 42, 47, 51, 54,
    22, 29, 36, 42, 47, 51, 54, 56,
    29, 36, 42, 47, 51, 54, 56, 57,
};
// clang-format on

// Where square b lies seen from square a.
enum Direction : std::uint8_t {
    NO_LINE = 0,
    NORTH,
    NORTH_EAST,
    EAST,
    SOUTH_EAST,
    SOUTH,
    SOUTH_WEST,
    WEST,
    NORTH_WEST
};

extern Bitboard SquareMask[64];
extern Bitboard fileMask[8];
extern Bitboard rankMask[8];
extern Bitboard adjacentFileMask[8];
extern Bitboard pawnAttack[2][64];
extern Bitboard knightAttack[64];
extern Bitboard kingAttack[64];
extern std::uint8_t direction[64][64];
extern Bitboard betweenMask[64][64]; // squares strictly between two squares on one line

// A square's rotated-bitboard sliding tables: the squares reached along each of its lines
// for every 6-bit occupancy of that line. The four lie together, so that a queen's lookups
// share one address and the code reading them one base register.
struct SlidingTables {
    Bitboard rank[64];
    Bitboard file[64];
    Bitboard diag45R[64];
    Bitboard diag45L[64];
};
extern SlidingTables slidingAttack[64];

// A square's bit in each of the four occupancy boards, side by side in the order Position
// keeps them, so a piece appearing or vanishing costs four XORs from one table row.
struct alignas(32) OccupancyBits {
    Bitboard all, r90, r45R, r45L;
};
inline constexpr auto OCCUPANCY_BITS = [] {
    std::array<OccupancyBits, 64> rows{};
    for (Square s = 0; s < 64; ++s)
        rows[s] = {bit(s), bit(rot90[s]), bit(rot45R[s]), bit(rot45L[s])};
    return rows;
}();

// The squares a bishop and a rook reach from each square on an empty board. A slider off
// these lines cannot attack the square whatever stands between, so attack tests ask this
// before reading the rotated boards.
struct SliderRays {
    Bitboard diagonal, line;
};
inline constexpr auto SLIDER_RAYS = [] {
    std::array<SliderRays, 64> rays{};
    for (Square a = 0; a < 64; ++a)
        for (Square b = 0; b < 64; ++b) {
            if (a == b)
                continue;
            const int df = fileOf(b) - fileOf(a), dr = rankOf(b) - rankOf(a);
            if (df == dr || df == -dr)
                rays[a].diagonal |= bit(b);
            else if (df == 0 || dr == 0)
                rays[a].line |= bit(b);
        }
    return rays;
}();

// Sliding attacks for occupancies given explicitly (plain and rotated), for callers that
// look through a piece (x-rays) without touching the position.
struct Occupancy {
    Bitboard all, r90, r45R, r45L;

    void remove(Square s) {
        const OccupancyBits& bits = OCCUPANCY_BITS[s];
        all &= ~bits.all;
        r90 &= ~bits.r90;
        r45R &= ~bits.r45R;
        r45L &= ~bits.r45L;
    }
    Bitboard rookAttacks(Square s) const {
        const SlidingTables& t = slidingAttack[s];
        return t.rank[(all >> (8 * rankOf(s) + 1)) & 63] | t.file[(r90 >> shift90[s]) & 63];
    }
    Bitboard bishopAttacks(Square s) const {
        const SlidingTables& t = slidingAttack[s];
        return t.diag45R[(r45R >> shift45R[s]) & 63] | t.diag45L[(r45L >> shift45L[s]) & 63];
    }
};

// Fills every table above; later calls do nothing.
void initGeometry();

// The slow walker the sliding tables are built from: squares reached from s along one line
// (given as file and rank steps), stopping at the first occupied square of `occupied`.
Bitboard slideAlong(Square s, int fileStep, int rankStep, Bitboard occupied);
