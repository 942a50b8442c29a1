// Perft counts are the strongest check of generation, make and unmake together. (The seven
// counters of the statistics walk are checked through the -perft command line.)
#include "test_support.h"

#include <gtest/gtest.h>

namespace {

// Every stride-th case of a suite up to maxDepth.
void expectSuite(const std::string& file, std::size_t maxDepth, std::size_t stride) {
    const std::vector<PerftCase> suite = loadPerftSuite(file);
    auto board                         = boardFrom(START_FEN);
    for (std::size_t i = 0; i < suite.size(); i += stride) {
        const PerftCase& c = suite[i];
        if (!hasStandardCastling(c.fen))
            continue;
        ASSERT_EQ(board->setPosition(c.fen.c_str()), 1) << c.id << ": " << c.fen;
        for (std::size_t d = 1; d <= std::min(maxDepth, c.counts.size()); ++d)
            ASSERT_EQ(board->perft(int(d), 0), c.counts[d - 1]) << c.id << " depth " << d;
    }
}

} // namespace

TEST(Perft, TrickyPositionsToFourPlies) {
    expectSuite("tricky.perft", 4, 1);
}

TEST(Perft, ASampleOfRandomPositionsToThreePlies) {
    expectSuite("random.perft", 3, 4 * PELLIX_SAMPLE_STRIDE);
}

TEST(Perft, DivideListsLegalRootMovesWithTheirLeaves) {
    auto board     = boardFrom(KIWIPETE_FEN);
    const int rows = board->divide(3);
    ASSERT_EQ(rows, 48);
    std::uint64_t total = 0;
    for (int i = 0; i < rows; ++i)
        total += board->divideRows[i].count;
    EXPECT_EQ(total, 97862u);
    // Moves that make rejects are generated but left out of the listing.
    board = boardFrom("4k3/8/8/8/8/8/4R3/4K2r w - - 0 1");
    EXPECT_EQ(board->divide(1), int(legalMoves(*board).size()));
}
