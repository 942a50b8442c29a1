// Deep perft: every random position to four plies and the tricky ones to their last depth;
// the statistics walk against the make-every-leaf walk over the random suite to three plies.
#include "movegen/perft_oracle.h"
#include "test_support.h"

#include <gtest/gtest.h>

TEST(PerftDeep, RandomPositionsToFourPlies) {
    expectPerftCounts("random.perft", 4, 1);
}

TEST(PerftDeep, TrickyPositionsToTheirLastDepth) {
    expectPerftCounts("tricky.perft", 99, 1);
}

TEST(PerftDeep, StatisticsAgreeWithTheMakeEveryLeafWalkOverTheRandomSuiteToThreePlies) {
    auto board = boardFrom(START_FEN);
    for (const PerftCase& c : loadPerftSuite("random.perft"))
        if (hasStandardCastling(c.fen))
            expectStatsMatchOracle(*board, c.fen, 3);
}
