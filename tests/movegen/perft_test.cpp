// Perft counts are the strongest check of generation, make and unmake together.
#include "test_support.h"

#include <gtest/gtest.h>

namespace {

// Runs every case of a suite (every stride-th one) up to maxDepth and reports each wrong
// count.
void expectSuite(const std::string& file, std::size_t maxDepth, std::size_t stride = 1) {
    const std::vector<PerftCase> suite = loadPerftSuite(file);
    auto board                         = std::make_unique<SilentBoard>();
    board->initTables(0);
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
    expectSuite("tricky.perft", 4);
}

TEST(Perft, RandomPositionsToThreePlies) {
    expectSuite("random.perft", 3, PELLIX_SAMPLE_STRIDE);
}

TEST(Perft, DepthZeroIsOneNode) {
    auto board = boardFrom(START_FEN);
    EXPECT_EQ(board->perft(0, 0), 1u);
}

// The seven counters of the statistics walk, checked against the published tables.
TEST(Perft, StatisticsCountEveryKindOfLeaf) {
    struct Row {
        const char* fen;
        int depth;
        PerftCounters expected;
    };
    const Row rows[] = {
        {START_FEN, 1, {20, 0, 0, 0, 0, 0, 0}},
        {START_FEN, 4, {197281, 1576, 0, 469, 8, 0, 0}},
        {KIWIPETE_FEN, 3, {97862, 17102, 45, 993, 1, 0, 3162}},
        {"8/2p5/3p4/KP5r/1R3p1k/8/4P1P1/8 w - - 0 1", 5, {674624, 52051, 1165, 52950, 0, 0, 0}},
        {"r3k2r/Pppp1ppp/1b3nbN/nP6/BBP1P3/q4N2/Pp1P2PP/R2Q1RK1 w kq - 0 1",
         3,
         {9467, 1021, 4, 38, 22, 120, 0}},
    };
    for (const Row& row : rows) {
        auto board           = boardFrom(row.fen);
        board->perftCounters = {};
        board->perftStats(row.depth, 0);
        const PerftCounters& c = board->perftCounters;
        const PerftCounters& e = row.expected;
        EXPECT_EQ(c.nodes, e.nodes) << row.fen;
        EXPECT_EQ(c.captures, e.captures) << row.fen;
        EXPECT_EQ(c.enPassant, e.enPassant) << row.fen;
        EXPECT_EQ(c.checks, e.checks) << row.fen;
        EXPECT_EQ(c.mates, e.mates) << row.fen;
        EXPECT_EQ(c.promotions, e.promotions) << row.fen;
        EXPECT_EQ(c.castles, e.castles) << row.fen;
    }
}

TEST(Perft, DivideListsLegalRootMovesWithTheirLeaves) {
    auto board     = boardFrom(START_FEN);
    const int rows = board->divide(3);
    ASSERT_EQ(rows, 20);
    std::uint64_t total = 0;
    for (int i = 0; i < rows; ++i)
        total += board->divideRows[i].count;
    EXPECT_EQ(total, 8902u);
    EXPECT_STREQ(board->divideRows[0].text, "Nb1-a3");

    // A pinned piece's moves are generated but rejected by make, and left out of the list.
    board = boardFrom("4k3/8/8/8/8/8/4R3/4K2r w - - 0 1");
    EXPECT_EQ(board->divide(1), int(legalMoves(*board).size()));
}
