// The full-width and root searches: mate and draw scores, mate scores in the table, a board
// left as found at every stop; and the transposition table itself.
#include "search/search_node.h"
#include "search_test_board.h"
#include "test_support.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <tuple>

namespace {

// A node below the root, of the given type.
int searchAt(RecordingBoard& board, int plies, int ply, std::uint8_t type,
             int alpha = -INFINITE_SCORE, int beta = INFINITE_SCORE) {
    PrincipalVariation pv;
    currentRecord(board).nodeType = type;
    return board.search(plies * ONE_PLY, ply * MOVE_STRIDE, alpha, beta, pv, true, ply);
}

// Everything a search may touch and must restore: the position with its history records, the
// repetition stack and the game record.
bool sameBoard(const ChessBoard& a, const ChessBoard& b) {
    const auto sameEntry = [](const RepetitionEntry& x, const RepetitionEntry& y) {
        return x.key == y.key && x.irreversible == y.irreversible;
    };
    return samePosition(a, b) && a.checkConsistency().empty() &&
           a.gameMoveCount == b.gameMoveCount && a.repetitionTop == b.repetitionTop &&
           std::equal(a.repetitionStack, a.repetitionStack + a.repetitionTop, b.repetitionStack,
                      sameEntry);
}

} // namespace

// Mates are found with their distance; a side that is mated or stalemated scores so and
// sends no move (the move hook still runs, with none).
TEST(Search, FindsMatesWithTheirDistance) {
    const std::tuple<const char*, const char*, int, int> cases[] = {
        {"2rr3k/pp3pp1/1nnqbN1p/3pN3/2pP4/2P3Q1/PPB4P/R4RK1 w - - 0 1", "g3g6", 5, MATE_SCORE - 3},
        {"r3k2r/pbp2pp1/3b1n2/1p6/3P3p/1B2N1Pq/PP1PQP1P/R1B2RK1 b kq - 0 1", "h3h2", 7,
         MATE_SCORE - 5},
        {"R5k1/5ppp/8/8/8/8/8/6K1 b - - 0 1", nullptr, 3, -MATE_SCORE},
        {"7k/5Q2/6K1/8/8/8/8/8 b - - 0 1", nullptr, 3, 0},
    };
    for (const auto& [fen, move, depth, score] : cases) {
        auto board          = searchBoard(fen);
        const Move expected = move ? findMove(*board, move) : NO_MOVE;
        board->sentMove     = 0xDEAD;
        thinkToDepth(*board, depth);
        EXPECT_TRUE(board->sentMove == expected && board->lastMove == expected) << fen;
        ASSERT_FALSE(board->reports.empty()) << fen;
        EXPECT_EQ(board->reports.back().score, score) << fen;
        EXPECT_TRUE(move || board->gameStatus == (score ? STATUS_MATE : STATUS_STALEMATE)) << fen;
    }
}

// The table keeps a mate score as the node that found it returned it, and hands it back
// unchanged at any other ply: the distance stays counted from where it was found.
TEST(Search, MateScoresComeBackFromTheTableAsTheyWereStored) {
    auto board = searchBoard("6k1/5ppp/8/1p6/8/8/8/R5K1 b - - 0 1");
    board->makeMove(findMove(*board, "b5b4")); // after it, Ra8 mates
    board->resetSearchTables();
    EXPECT_EQ(searchAt(*board, 2, 3, PV_NODE), MATE_SCORE - 4); // Black is mated at ply 4
    const HashEntry* entry = board->hashTable->probe(board->hashKey);
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
// the repetition stack and the game record exactly as a board that never searched. A node
// limit is met exactly; each completed depth is reported once and in order (an aspiration
// failure repeats its depth silently), and the move played is the last line's.
TEST(Search, LeavesTheBoardAsItFoundItAtEveryStop) {
    const auto suite = loadPerftSuite("tricky.perft");
    for (std::size_t i = 0; i < suite.size(); i += 3) {
        const std::string& fen = suite[i].fen;
        if (!hasStandardCastling(fen))
            continue;
        auto board = searchBoard(fen), untouched = searchBoard(fen);
        for (std::int64_t limit : {1, 2, 7, 61, 500, 3001}) {
            // One iteration at the root, prepared the way think prepares it.
            board->limits.setTimeMode(TIME_NODES, limit);
            board->resetSearchTables();
            board->computeTimeLimit();
            board->principalVariation.clear();
            board->searchRoot(5 * ONE_PLY, -INFINITE_SCORE, INFINITE_SCORE,
                              board->principalVariation);
            ASSERT_TRUE(sameBoard(*board, *untouched)) << fen << " limit " << limit;
        }
        board->limits.setTimeMode(TIME_NODES, 2000);
        board->think();
        EXPECT_EQ(board->nodeCount, 2000u);
        ASSERT_FALSE(board->reports.empty());
        for (std::size_t d = 0; d < board->reports.size(); ++d)
            EXPECT_EQ(board->reports[d].depth, int(d) + 1) << fen;
        EXPECT_EQ(board->sentMove, board->reports.back().line.at(0));
        board->takeBackGameMove();
        EXPECT_TRUE(sameBoard(*board, *untouched)) << fen;
    }
}

// Sizes round up to a power of two up to 2048; stores always replace; probes match the whole
// key; a table of no entries is never touched.
TEST(TranspositionTable, SizingStoresAndProbes) {
    EXPECT_EQ(roundedHashMegabytes(100), 128u);
    EXPECT_EQ(roundedHashMegabytes(3000), 0u);
    HashTable table, none;
    ASSERT_TRUE(table.init(2) && none.init(1));
    const std::uint64_t a = 0x123456789ABCDEF0ull, b = a ^ (std::uint64_t(1) << 40); // one slot
    table.store(a, 77, BOUND_LOWER, 40, -31990);
    const HashEntry* stored = table.probe(a);
    ASSERT_TRUE(stored && stored->move == 77 && infoScore(stored->info) == -31990);
    EXPECT_TRUE(infoBound(stored->info) == BOUND_LOWER && infoDepth(stored->info) == 40);
    EXPECT_EQ(table.probe(b), nullptr);
    table.store(b, 88, BOUND_UPPER, 8, 5); // shallower, still replaces
    EXPECT_EQ(table.probe(a), nullptr);
    EXPECT_EQ(table.probe(b)->move, 88u);
    none.store(a, 77, BOUND_EXACT, 40, 12);
    EXPECT_EQ(none.probe(a), nullptr);
    table.release();
}
