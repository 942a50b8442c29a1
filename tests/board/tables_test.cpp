// The rotated-bitboard lookups against the slow line walker, for random occupancies.
#include "board/position.h"

#include <gtest/gtest.h>
#include <random>

TEST(Tables, SlidingLookupsMatchTheWalker) {
    initGeometry();
    std::mt19937_64 random(7);
    for (int trial = 0; trial < 2000; ++trial) {
        // Sparse and dense boards both: AND-ing random words thins them out.
        Bitboard occupied = random();
        for (int thin = trial % 4; thin > 0; --thin)
            occupied &= random();
        Position p{};
        for (Bitboard b = occupied; b;)
            p.flipOccupancy(popLowest(b));
        auto walk = [&](Square s, int df, int dr) {
            return slideAlong(s, df, dr, occupied) | slideAlong(s, -df, -dr, occupied);
        };
        SCOPED_TRACE(testing::Message() << "occupied " << std::hex << occupied);
        for (Square s = 0; s < 64; ++s) {
            ASSERT_EQ(p.rankAttacks(s), walk(s, 1, 0)) << s;
            ASSERT_EQ(p.fileAttacks(s), walk(s, 0, 1)) << s;
            ASSERT_EQ(p.bishopAttacks(s), walk(s, 1, 1) | walk(s, 1, -1)) << s;
        }
    }
}
