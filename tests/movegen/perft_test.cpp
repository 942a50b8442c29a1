// Perft counts are the strongest check of generation, make and unmake together, evasions
// included. (The seven counters of the statistics walk are checked through the -perft
// command line.)
#include "test_support.h"

#include <gtest/gtest.h>

TEST(Perft, TrickyPositionsToFourPlies) {
    expectPerftCounts("tricky.perft", 4, 1);
}

TEST(Perft, ASampleOfRandomPositionsToThreePlies) {
    expectPerftCounts("random.perft", 3, 4 * PELLIX_SAMPLE_STRIDE);
}

// Divide lists the legal root moves, each with its own leaves; moves that make rejects are
// generated but left out.
TEST(Perft, DivideListsLegalRootMovesWithTheirLeaves) {
    for (const char* fen : {KIWIPETE_FEN, "4k3/8/8/8/8/8/4R3/4K2r w - - 0 1"}) {
        auto board     = boardFrom(fen);
        const int rows = board->divide(3);
        ASSERT_EQ(rows, int(legalMoves(*board).size())) << fen;
        std::uint64_t total = 0;
        for (int i = 0; i < rows; ++i)
            total += board->divideRows[i].count;
        EXPECT_EQ(total, board->perft(3, 0)) << fen;
    }
}
