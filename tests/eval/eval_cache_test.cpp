// The evaluation cache, which the evaluation leaves switched off: a score stored under a key
// comes back for that key only, the slot's last store wins, and a table of no entries or one
// cleared answers misses.
#include "eval/eval_cache.h"

#include <gtest/gtest.h>

TEST(EvalCache, StoresProbesAndMisses) {
    EvalHashTable cache, none;
    ASSERT_TRUE(cache.init(1));
    EXPECT_EQ(cache.entryCount, 65536u);
    EXPECT_FALSE(none.init(0));
    int score = 0;
    cache.store(0x1234, 0xABCD, -250);
    EXPECT_EQ(cache.probe(0x1234, 0xABCD, score), 0);
    EXPECT_EQ(score, -250);
    EXPECT_EQ(cache.probe(0x1234, 0xABCE, score), EVAL_CACHE_MISS) << "the high half differs";
    cache.store(0x1234 + 65536, 0x1, 77); // the same slot
    EXPECT_EQ(cache.probe(0x1234, 0xABCD, score), EVAL_CACHE_MISS);
    EXPECT_EQ(cache.probe(0x1234 + 65536, 0x1, score), 0);
    EXPECT_EQ(score, 77);
    cache.clear();
    EXPECT_EQ(cache.probe(0x1234 + 65536, 0x1, score), EVAL_CACHE_MISS);
    none.store(1, 2, 3);
    EXPECT_EQ(none.probe(1, 2, score), EVAL_CACHE_MISS);
    cache.destroy();
}
