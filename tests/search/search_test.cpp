// The full-width, root and capture searches: mate and draw scores, mate scores in the table,
// and a board left as found at every stop.
#include "search/search_node.h"
#include "search_test_board.h"
#include "test_support.h"

#include <gtest/gtest.h>
#include <tuple>

namespace {

// One iteration at the root, prepared the way think prepares it.
int searchRootAt(RecordingBoard& board, int plies) {
    board.resetSearchTables();
    board.computeTimeLimit();
    board.principalVariation.clear();
    return board.searchRoot(plies * ONE_PLY, -INFINITE_SCORE, INFINITE_SCORE,
                            board.principalVariation);
}

// A node below the root, of the given type.
int searchAt(RecordingBoard& board, int plies, int ply, std::uint8_t type,
             int alpha = -INFINITE_SCORE, int beta = INFINITE_SCORE) {
    PrincipalVariation pv;
    currentRecord(board).nodeType = type;
    return board.search(plies * ONE_PLY, ply * MOVE_STRIDE, alpha, beta, pv, true, ply);
}

} // namespace

TEST(Search, FindsMatesWithTheirDistance) {
    const std::tuple<const char*, const char*, int> mates[] = {
        {"2rr3k/pp3pp1/1nnqbN1p/3pN3/2pP4/2P3Q1/PPB4P/R4RK1 w - - 0 1", "g3g6", 3},
        {"r3k2r/pbp2pp1/3b1n2/1p6/3P3p/1B2N1Pq/PP1PQP1P/R1B2RK1 b kq - 0 1", "h3h2", 5},
    };
    for (const auto& [fen, move, matedAtPly] : mates) {
        auto board          = searchBoard(fen);
        const Move expected = findMove(*board, move);
        thinkToDepth(*board, matedAtPly + 2);
        EXPECT_EQ(board->lastMove, expected) << fen;
        EXPECT_EQ(board->reports.back().score, MATE_SCORE - matedAtPly) << fen;
    }
    auto mated = searchBoard("R5k1/5ppp/8/8/8/8/8/6K1 b - - 0 1");
    EXPECT_EQ(searchRootAt(*mated, 3), -MATE_SCORE);
    EXPECT_EQ(mated->gameStatus, STATUS_MATE);
    auto stalemated = searchBoard("7k/5Q2/6K1/8/8/8/8/8 b - - 0 1");
    EXPECT_EQ(searchRootAt(*stalemated, 3), 0);
    EXPECT_EQ(stalemated->gameStatus, STATUS_STALEMATE);
}

// The table keeps a mate score as the node that found it returned it, and hands it back
// unchanged at any other ply: the distance stays counted from where it was found.
TEST(Search, MateScoresComeBackFromTheTableAsTheyWereStored) {
    auto board = searchBoard("6k1/5ppp/8/1p6/8/8/8/R5K1 b - - 0 1");
    board->makeMove(findMove(*board, "b5b4")); // after it, Ra8 mates
    board->resetSearchTables();
    EXPECT_EQ(searchAt(*board, 2, 3, PV_NODE), MATE_SCORE - 4); // Black is mated at ply 4
    const HashEntry* entry = board->hashTable.probe(board->hashKey);
    ASSERT_NE(entry, nullptr);
    EXPECT_EQ(infoBound(entry->info), BOUND_EXACT);
    EXPECT_EQ(infoScore(entry->info), MATE_SCORE - 4);
    const std::uint64_t nodes = board->nodeCount;
    EXPECT_EQ(searchAt(*board, 2, 1, RE_SEARCH_NODE), MATE_SCORE - 4); // not MATE_SCORE - 2
    EXPECT_EQ(board->nodeCount, nodes + 1) << "answered by the table";
}

// White is a rook up, but a node that stands on the game's first position again scores 0;
// where Black cannot step back, the rook counts. A node past the fifty-move rule scores 0
// before anything else.
TEST(Search, RepetitionAndFiftyMovesAreDraws) {
    const std::tuple<std::vector<const char*>, int> lines[] = {
        {{"g1f3", "e8d8", "f3g1", "d8e8"}, 0}, {{"g1f3", "e8d8", "a1a2"}, -100}};
    for (const auto& [line, score] : lines) {
        auto board = searchBoard("4k3/8/8/8/8/8/8/R3K1N1 w - - 0 1");
        for (std::size_t i = 0; i + 1 < line.size(); ++i)
            ASSERT_TRUE(board->playGameMove(findMove(*board, line[i])));
        board->makeMove(findMove(*board, line.back()));
        board->resetSearchTables();
        EXPECT_EQ(searchAt(*board, 4, 1, RE_SEARCH_NODE, -100, 100), score);
    }
    auto fifty = searchBoard("4k3/8/8/8/8/8/8/R3K1N1 w - - 100 80");
    fifty->resetSearchTables();
    EXPECT_EQ(searchAt(*fifty, 4, 1, RE_SEARCH_NODE), 0);
    EXPECT_EQ(fifty->nodeCount, 1u);
}

// Searches stopped by node limits at many awkward moments leave the position, its history,
// the repetition stack and the game record exactly as they were; a node limit is met exactly.
TEST(Search, LeavesTheBoardAsItFoundItAtEveryStop) {
    const auto suite = loadPerftSuite("tricky.perft");
    for (std::size_t i = 0; i < suite.size(); i += 3) {
        if (!hasStandardCastling(suite[i].fen))
            continue;
        auto board = searchBoard(suite[i].fen);
        const BoardSnapshot before(*board);
        for (std::int64_t limit : {1, 2, 7, 61, 500, 3001}) {
            board->setTimeMode(TIME_NODES, limit);
            searchRootAt(*board, 5);
            ASSERT_TRUE(before.matches(*board)) << suite[i].fen << " limit " << limit;
        }
        board->setTimeMode(TIME_NODES, 2000);
        board->think();
        EXPECT_EQ(board->nodeCount, 2000u);
        ASSERT_FALSE(board->reports.empty());
        EXPECT_EQ(board->sentMove, board->reports.back().line.at(0));
        board->takeBackGameMove();
        EXPECT_TRUE(before.matches(*board)) << suite[i].fen;
    }
}

// Quiescence stands pat at once above beta, and never searches a capture the ordering marks
// as losing, while it does take the same pawn undefended.
TEST(Search, QuiescenceStandsPatAndSkipsLosingCaptures) {
    const std::tuple<const char*, int, bool> cases[] = {
        {"4k3/8/8/8/8/8/8/Q3K3 w - - 0 1", 100, false},
        {"4k3/8/2p5/3p4/8/8/8/3QK3 w - - 0 1", INFINITE_SCORE, false},
        {"4k3/8/8/3p4/8/8/8/3QK3 w - - 0 1", INFINITE_SCORE, true}};
    for (const auto& [fen, beta, searchesOn] : cases) {
        auto board = searchBoard(fen);
        board->resetSearchTables();
        const int score    = board->quiesce(1, MOVE_STRIDE, -INFINITE_SCORE, beta, true);
        const int standPat = board->evaluate(-INFINITE_SCORE, INFINITE_SCORE, 0);
        EXPECT_EQ(board->nodeCount > 1, searchesOn) << fen;
        EXPECT_TRUE(searchesOn || score == std::min(standPat, beta)) << fen;
    }
}
