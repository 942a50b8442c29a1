// Deep perft: every random position to four plies and the tricky ones to their last depth.
#include "test_support.h"

#include <gtest/gtest.h>

TEST(PerftDeep, RandomPositionsToFourPlies) {
    const std::vector<PerftCase> suite = loadPerftSuite("random.perft");
    ASSERT_FALSE(suite.empty());
    auto board = std::make_unique<SilentBoard>();
    board->initTables(0);
    for (const PerftCase& c : suite) {
        ASSERT_EQ(board->setPosition(c.fen.c_str()), 1) << c.fen;
        ASSERT_GE(c.counts.size(), 4u);
        ASSERT_EQ(board->perft(4, 0), c.counts[3]) << c.id;
    }
}

TEST(PerftDeep, TrickyPositionsToTheirLastDepth) {
    auto board = std::make_unique<SilentBoard>();
    board->initTables(0);
    for (const PerftCase& c : loadPerftSuite("tricky.perft")) {
        if (!hasStandardCastling(c.fen))
            continue;
        ASSERT_EQ(board->setPosition(c.fen.c_str()), 1) << c.fen;
        EXPECT_EQ(board->perft(int(c.counts.size()), 0), c.counts.back()) << c.id;
    }
}
