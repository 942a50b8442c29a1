// The transposition table: its sizing rule, the packing of its info word, always-replace
// stores, and a table of no entries that is never touched.
#include "search/transposition_table.h"

#include <gtest/gtest.h>

TEST(TranspositionTable, SizingRoundsUpToAPowerOfTwo) {
    struct Case {
        std::uint32_t requested, megabytes;
    };
    for (Case c :
         {Case{0, 0}, {1, 0}, {2, 2}, {3, 4}, {64, 64}, {100, 128}, {1025, 2048}, {3000, 0}})
        EXPECT_EQ(roundedHashMegabytes(c.requested), c.megabytes) << c.requested;

    HashTable table;
    ASSERT_TRUE(table.init(3));
    EXPECT_EQ(table.entryCount, 4u * 65536u);
    EXPECT_EQ(table.indexMask, 4u * 65536u - 1);
    table.release();
}

TEST(TranspositionTable, InfoWordRoundTrips) {
    const std::uint32_t info = packInfo(BOUND_LOWER, 40, -31990);
    EXPECT_EQ(info, 2u | 40u << 2 | 0x10000u | 31990u << 17);
    EXPECT_EQ(infoBound(info), BOUND_LOWER);
    EXPECT_EQ(infoDepth(info), 40);
    EXPECT_EQ(infoScore(info), -31990);
    for (int score : {0, 1, -1, 32001, -32001, 31999})
        EXPECT_EQ(infoScore(packInfo(BOUND_EXACT, 8, score)), score);
    EXPECT_EQ(infoDepth(packInfo(BOUND_UPPER, 256, 0)), 0); // depths wrap at 32 plies
}

TEST(TranspositionTable, StoresReplaceAndProbesMatchTheWholeKey) {
    HashTable table;
    ASSERT_TRUE(table.init(2));
    const std::uint64_t a = 0x123456789ABCDEF0ull;
    const std::uint64_t b = a ^ (std::uint64_t(1) << 40); // same slot, other position
    table.store(a, 77, BOUND_EXACT, 40, 12);
    ASSERT_NE(table.probe(a), nullptr);
    EXPECT_EQ(table.probe(a)->move, 77u);
    EXPECT_EQ(table.probe(b), nullptr);
    table.store(b, 88, BOUND_UPPER, 8, -5); // shallower, still replaces
    EXPECT_EQ(table.probe(a), nullptr);
    EXPECT_EQ(table.probe(b)->move, 88u);
    table.release();

    HashTable none;
    ASSERT_TRUE(none.init(1));
    EXPECT_EQ(none.entryCount, 0u);
    none.store(a, 77, BOUND_EXACT, 40, 12);
    EXPECT_EQ(none.probe(a), nullptr);
}
