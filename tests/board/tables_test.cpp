// The rotated-bitboard lookups against the slow line walker, for random occupancies.
#include "board/position.h"

#include <gtest/gtest.h>
#include <random>

namespace {

Position withOccupancy(Bitboard occupied) {
    Position p{};
    for (Bitboard b = occupied; b;)
        p.flipOccupancy(popLowest(b));
    return p;
}

} // namespace

TEST(Tables, SlidingLookupsMatchTheWalker) {
    initGeometry();
    std::mt19937_64 random(7);
    for (int trial = 0; trial < 2000; ++trial) {
        // Sparse and dense boards both: AND-ing random words thins them out.
        Bitboard occupied = random();
        if (trial % 2)
            occupied &= random();
        if (trial % 3 == 0)
            occupied &= random() & random();
        const Position p = withOccupancy(occupied);
        for (Square s = 0; s < 64; ++s) {
            ASSERT_EQ(p.rankAttacks(s),
                      slideAlong(s, 1, 0, occupied) | slideAlong(s, -1, 0, occupied));
            ASSERT_EQ(p.fileAttacks(s),
                      slideAlong(s, 0, 1, occupied) | slideAlong(s, 0, -1, occupied));
            ASSERT_EQ(p.bishopAttacks(s),
                      slideAlong(s, 1, 1, occupied) | slideAlong(s, -1, -1, occupied) |
                          slideAlong(s, 1, -1, occupied) | slideAlong(s, -1, 1, occupied))
                << "square " << s << " occupancy " << std::hex << occupied;
        }
    }
}

TEST(Tables, DirectionAndBetween) {
    initGeometry();
    EXPECT_EQ(direction[0][0], NO_LINE);
    EXPECT_EQ(direction[1][18], NO_LINE); // b1 to c3, a knight's jump
    EXPECT_EQ(direction[0][63], NORTH_EAST);
    EXPECT_EQ(direction[4][60], NORTH);
    EXPECT_EQ(direction[63][0], SOUTH_WEST);
    EXPECT_EQ(direction[7][0], WEST);
    EXPECT_EQ(betweenMask[0][63], 0x0040201008040200ULL);
    EXPECT_EQ(betweenMask[4][6], bit(5));
    EXPECT_EQ(betweenMask[4][5], 0u);
    EXPECT_EQ(pawnAttack[WHITE][60], 0u); // a white pawn on its last rank attacks nothing
    EXPECT_EQ(pawnAttack[BLACK][3], 0u);
    EXPECT_EQ(pawnAttack[WHITE][8], bit(17)); // a2 attacks b3 only
}
