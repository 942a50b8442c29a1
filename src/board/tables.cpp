// Builds the process-wide geometry tables from a description of how each piece moves, so
// the board edge is handled in one place (the walker) rather than in every table.
#include "board/tables.h"

Bitboard SquareMask[64];
Bitboard fileMask[8];
Bitboard rankMask[8];
Bitboard adjacentFileMask[8];
Bitboard pawnAttack[2][64];
Bitboard knightAttack[64];
Bitboard kingAttack[64];
std::uint8_t direction[64][64];
Bitboard betweenMask[64][64];
SlidingTables slidingAttack[64];

namespace {

bool onBoard(int file, int rank) {
    return file >= 0 && file < 8 && rank >= 0 && rank < 8;
}

struct Step {
    int file, rank;
};

Bitboard leaperAttacks(Square s, const Step* steps, int count) {
    Bitboard b = 0;
    for (int i = 0; i < count; ++i) {
        int f = fileOf(s) + steps[i].file, r = rankOf(s) + steps[i].rank;
        if (onBoard(f, r))
            b |= bit(squareAt(f, r));
    }
    return b;
}

// The eight compass steps in the order of the Direction codes 1..8.
constexpr Step compass[8] = {{0, 1}, {1, 1}, {1, 0}, {1, -1}, {0, -1}, {-1, -1}, {-1, 0}, {-1, 1}};

// One sliding table: for every square and every 6-bit value cut from a rotated board, the
// squares reached along the line. The 6 bits are mapped back to real squares through the
// rotation, so a window that also covers squares of a neighbouring line just ignores them.
void buildSlidingTable(Bitboard (SlidingTables::*table)[64], const int rotation[64],
                       const int shift[64], Step step) {
    Square unrotate[64];
    for (Square s = 0; s < 64; ++s)
        unrotate[rotation[s]] = s;
    for (Square s = 0; s < 64; ++s) {
        for (int o = 0; o < 64; ++o) {
            Bitboard occupied = 0;
            for (int i = 0; i < 6; ++i)
                if (o & (1 << i))
                    occupied |= bit(unrotate[shift[s] + i]);
            (slidingAttack[s].*table)[o] = slideAlong(s, step.file, step.rank, occupied) |
                                           slideAlong(s, -step.file, -step.rank, occupied);
        }
    }
}

} // namespace

Bitboard slideAlong(Square s, int fileStep, int rankStep, Bitboard occupied) {
    Bitboard reached = 0;
    int f = fileOf(s) + fileStep, r = rankOf(s) + rankStep;
    while (onBoard(f, r)) {
        Square t = squareAt(f, r);
        reached |= bit(t);
        if (occupied & bit(t))
            break;
        f += fileStep;
        r += rankStep;
    }
    return reached;
}

void initGeometry() {
    static bool built = false;
    if (built)
        return;
    built = true;

    static constexpr Step knightSteps[8] = {{1, 2},   {2, 1},   {2, -1}, {1, -2},
                                            {-1, -2}, {-2, -1}, {-2, 1}, {-1, 2}};
    for (Square s = 0; s < 64; ++s) {
        SquareMask[s]   = bit(s);
        knightAttack[s] = leaperAttacks(s, knightSteps, 8);
        kingAttack[s]   = leaperAttacks(s, compass, 8);
        // A pawn on its last rank attacks nothing: leaperAttacks drops the off-board steps.
        static constexpr Step whitePawn[2] = {{-1, 1}, {1, 1}}, blackPawn[2] = {{-1, -1}, {1, -1}};
        pawnAttack[WHITE][s] = leaperAttacks(s, whitePawn, 2);
        pawnAttack[BLACK][s] = leaperAttacks(s, blackPawn, 2);
    }
    for (int i = 0; i < 8; ++i) {
        fileMask[i] = 0x0101010101010101ULL << i;
        rankMask[i] = 0xFFULL << (8 * i);
    }
    for (int f = 0; f < 8; ++f)
        adjacentFileMask[f] = (f > 0 ? fileMask[f - 1] : 0) | (f < 7 ? fileMask[f + 1] : 0);

    for (Square a = 0; a < 64; ++a) {
        for (Square b = 0; b < 64; ++b) {
            direction[a][b]   = NO_LINE;
            betweenMask[a][b] = 0;
        }
        for (int d = 0; d < 8; ++d) {
            Bitboard passed = 0;
            int f = fileOf(a) + compass[d].file, r = rankOf(a) + compass[d].rank;
            while (onBoard(f, r)) {
                Square b          = squareAt(f, r);
                direction[a][b]   = std::uint8_t(d + 1);
                betweenMask[a][b] = passed;
                passed |= bit(b);
                f += compass[d].file;
                r += compass[d].rank;
            }
        }
    }

    static constexpr int identity[64] = {
        0,  1,  2,  3,  4,  5,  6,  7,  8,  9,  10, 11, 12, 13, 14, 15, 16, 17, 18, 19, 20, 21,
        22, 23, 24, 25, 26, 27, 28, 29, 30, 31, 32, 33, 34, 35, 36, 37, 38, 39, 40, 41, 42, 43,
        44, 45, 46, 47, 48, 49, 50, 51, 52, 53, 54, 55, 56, 57, 58, 59, 60, 61, 62, 63};
    int rankShift[64];
    for (Square s = 0; s < 64; ++s)
        rankShift[s] = 8 * rankOf(s) + 1;
    buildSlidingTable(&SlidingTables::rank, identity, rankShift, {1, 0});
    buildSlidingTable(&SlidingTables::file, rot90, shift90, {0, 1});
    buildSlidingTable(&SlidingTables::diag45R, rot45R, shift45R, {1, 1});
    buildSlidingTable(&SlidingTables::diag45L, rot45L, shift45L, {1, -1});
}
