// The evaluation cache: sizing, the miss value, replacement in a slot, clearing and release.
#include "eval/eval_cache.h"

#include <gtest/gtest.h>

TEST(EvalCache, SizedAtSixtyFiveThousandEntriesAMegabyte) {
    EvalHashTable table;
    ASSERT_TRUE(table.init(1));
    EXPECT_EQ(table.entryCount, 65536u);
    EXPECT_EQ(table.indexMask, 65535u);
    // Three megabytes: the mask leaves some entries unreachable but never points past the end.
    ASSERT_TRUE(table.init(3));
    EXPECT_EQ(table.entryCount, 196608u);
    EXPECT_LT(table.indexMask, table.entryCount);
    table.store(0xFFFFFFFFu, 1, -7);
    int score = 0;
    EXPECT_EQ(table.probe(0xFFFFFFFFu, 1, score), 0);
    EXPECT_EQ(score, -7);
    table.destroy();
}

TEST(EvalCache, ProbeHitsTheLastKeyStoredInItsSlot) {
    EvalHashTable table;
    ASSERT_TRUE(table.init(1));
    int score = 99;
    // A zeroed table holds key 0 with score 0 in every slot.
    EXPECT_EQ(table.probe(0, 0, score), 0);
    EXPECT_EQ(score, 0);
    score = 99;
    EXPECT_EQ(table.probe(5, 7, score), EVAL_CACHE_MISS);
    EXPECT_EQ(score, 99);

    table.store(5, 7, -1234);
    EXPECT_EQ(table.probe(5, 7, score), 0);
    EXPECT_EQ(score, -1234);
    EXPECT_EQ(table.probe(5, 8, score), EVAL_CACHE_MISS); // same slot, other high half
    table.store(5 + 65536, 9, 31000);                     // same slot, always replaced
    EXPECT_EQ(table.probe(5, 7, score), EVAL_CACHE_MISS);
    EXPECT_EQ(table.probe(5 + 65536, 9, score), 0);
    EXPECT_EQ(score, 31000);

    table.clear();
    EXPECT_EQ(table.probe(5 + 65536, 9, score), EVAL_CACHE_MISS);
    table.destroy();
    EXPECT_EQ(table.entries, nullptr);
    EXPECT_EQ(table.probe(0, 0, score), EVAL_CACHE_MISS);
}

TEST(EvalCache, NoTableForSizesWithoutEntries) {
    EvalHashTable table;
    for (int megabytes : {0, -3, 65536}) {
        EXPECT_FALSE(table.init(megabytes)) << megabytes;
        EXPECT_EQ(table.entries, nullptr);
        int score = 0;
        table.store(1, 2, 3); // nothing to store into
        EXPECT_EQ(table.probe(1, 2, score), EVAL_CACHE_MISS);
    }
}
