// The evaluation cache, which nothing consults yet: misses, replacement in a slot, clearing,
// and no table at all for sizes without entries.
#include "eval/eval_cache.h"

#include <gtest/gtest.h>

TEST(EvalCache, ProbeHitsTheLastKeyStoredInItsSlot) {
    EvalHashTable table;
    int score = 99;
    ASSERT_TRUE(table.init(3)); // some slots unreachable, none outside the table
    EXPECT_EQ(table.probe(5, 7, score), EVAL_CACHE_MISS);
    table.store(5, 7, -1234);
    EXPECT_EQ(table.probe(5, 7, score), 0);
    EXPECT_EQ(score, -1234);
    EXPECT_EQ(table.probe(5, 8, score), EVAL_CACHE_MISS); // same slot, other high half
    table.store(5 + 65536, 9, 31000);                     // same slot, replaced
    EXPECT_EQ(table.probe(5, 7, score), EVAL_CACHE_MISS);
    table.clear();
    EXPECT_EQ(table.probe(5 + 65536, 9, score), EVAL_CACHE_MISS);
    for (int megabytes : {0, 65536}) {
        EXPECT_FALSE(table.init(megabytes)) << megabytes;
        table.store(1, 2, 3);
        EXPECT_EQ(table.probe(1, 2, score), EVAL_CACHE_MISS);
    }
}
