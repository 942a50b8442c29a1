// Deep perft: every random position to four plies and the tricky ones to their last depth.
#include "test_support.h"

#include <gtest/gtest.h>

TEST(PerftDeep, RandomPositionsToFourPlies) {
    expectPerftCounts("random.perft", 4, 1);
}

TEST(PerftDeep, TrickyPositionsToTheirLastDepth) {
    expectPerftCounts("tricky.perft", 99, 1);
}
