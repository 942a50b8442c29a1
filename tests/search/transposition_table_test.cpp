// The transposition table: the documented sizing rule, always-replace stores, probes that
// match the whole key, and a table of no entries that is never touched.
#include "search/transposition_table.h"

#include <gtest/gtest.h>

TEST(TranspositionTable, SizingRoundsUpToAPowerOfTwoUpTo2048) {
    const std::uint32_t cases[][2] = {{0, 0},     {1, 0},       {2, 2},       {3, 4},
                                      {100, 128}, {1025, 2048}, {2048, 2048}, {3000, 0}};
    for (const auto& c : cases)
        EXPECT_EQ(roundedHashMegabytes(c[0]), c[1]) << c[0];
}

TEST(TranspositionTable, StoresReplaceAndProbesMatchTheWholeKey) {
    HashTable table, none;
    ASSERT_TRUE(table.init(2) && none.init(1));
    const std::uint64_t a = 0x123456789ABCDEF0ull, b = a ^ (std::uint64_t(1) << 40); // one slot
    table.store(a, 77, BOUND_LOWER, 40, -31990);
    ASSERT_NE(table.probe(a), nullptr);
    EXPECT_EQ(table.probe(a)->move, 77u);
    EXPECT_EQ(table.probe(a)->info, packInfo(BOUND_LOWER, 40, -31990));
    EXPECT_EQ(infoScore(table.probe(a)->info), -31990);
    EXPECT_EQ(table.probe(b), nullptr);
    table.store(b, 88, BOUND_UPPER, 8, 5); // shallower, still replaces
    EXPECT_EQ(table.probe(a), nullptr);
    EXPECT_EQ(table.probe(b)->move, 88u);
    none.store(a, 77, BOUND_EXACT, 40, 12);
    EXPECT_EQ(none.probe(a), nullptr);
    table.release();
}
