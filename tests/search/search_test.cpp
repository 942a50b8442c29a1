// The full-width, root and capture searches: mate and draw scores, a board left as found at
// every stop and the per-ply arrays at the deepest plies.
#include "search/search_node.h"
#include "search_test_board.h"
#include "test_support.h"

#include <gtest/gtest.h>

namespace {

struct MateCase {
    const char* fen;
    const char* move; // the mating line's first move, in coordinates
    int matedAtPly;
};

// WAC positions whose best move mates in two or three.
constexpr MateCase mates[] = {
    {"2rr3k/pp3pp1/1nnqbN1p/3pN3/2pP4/2P3Q1/PPB4P/R4RK1 w - - 0 1", "g3g6", 3},
    {"5k2/6pp/p1qN4/1p1p4/3P4/2PKP2Q/PP3r2/3R4 b - - 0 1", "c6c4", 3},
    {"r1bq1r1k/1pp1Np1p/p2p2pQ/4R3/n7/8/PPPP1PPP/R1B3K1 w - - 0 1", "e5h5", 3},
    {"k4r2/1R4pb/1pQp1n1p/3P4/5p1P/3P2P1/r1q1R2K/8 w - - 0 1", "b7b6", 5},
    {"8/6pp/3q1p2/3n1k2/1P6/3NQ2P/5PP1/6K1 w - - 0 1", "g2g4", 5},
    {"r3k2r/pbp2pp1/3b1n2/1p6/3P3p/1B2N1Pq/PP1PQP1P/R1B2RK1 b kq - 0 1", "h3h2", 5},
};

std::string coordinates(Move m) {
    char text[8];
    std::snprintf(text, sizeof text, "%c%d%c%d", 'a' + fileOf(moveFrom(m)), 1 + rankOf(moveFrom(m)),
                  'a' + fileOf(moveTo(m)), 1 + rankOf(moveTo(m)));
    return text;
}

// Runs one iteration at the root the way think prepares it.
int searchRootAt(RecordingBoard& board, int plies) {
    board.resetSearchTables();
    board.computeTimeLimit();
    board.principalVariation.clear();
    return board.searchRoot(plies * ONE_PLY, -INFINITE_SCORE, INFINITE_SCORE,
                            board.principalVariation);
}

} // namespace

TEST(Search, FindsMatesWithTheirDistance) {
    for (const MateCase& c : mates) {
        auto board = searchBoard(c.fen);
        thinkToDepth(*board, c.matedAtPly + 2);
        EXPECT_EQ(coordinates(board->lastMove), c.move) << c.fen;
        EXPECT_EQ(board->lastScore(), MATE_SCORE - c.matedAtPly) << c.fen;
    }
}

TEST(Search, MatedAndStalematedRoots) {
    auto mated = searchBoard("R5k1/5ppp/8/8/8/8/8/6K1 b - - 0 1");
    EXPECT_EQ(searchRootAt(*mated, 3), -MATE_SCORE);
    EXPECT_EQ(mated->gameStatus, STATUS_MATE);
    EXPECT_EQ(mated->principalVariation.count, 0u);

    auto stalemated = searchBoard("7k/5Q2/6K1/8/8/8/8/8 b - - 0 1");
    EXPECT_EQ(searchRootAt(*stalemated, 3), 0);
    EXPECT_EQ(stalemated->gameStatus, STATUS_STALEMATE);

    // A mate found below the root is scored by its ply.
    auto mateInOne = searchBoard("6k1/5ppp/8/8/8/8/8/R5K1 w - - 0 1");
    EXPECT_EQ(searchRootAt(*mateInOne, 3), MATE_SCORE - 1);
    EXPECT_EQ(coordinates(mateInOne->principalVariation.moves[0]), "a1a8");
}

TEST(Search, RepetitionAndFiftyMovesAreDraws) {
    // White is a rook up, but the knight has danced back and Black's king returns: the node
    // stands on the game's first position again and scores 0.
    PrincipalVariation pv;
    pv.clear();
    auto danced = searchBoard("4k3/8/8/8/8/8/8/R3K1N1 w - - 0 1");
    playMoves(*danced, {"g1f3", "e8d8", "f3g1"});
    const Move back = findMove(*danced, "d8e8");
    danced->makeMove(back);
    danced->resetSearchTables();
    currentRecord(*danced).nodeType = 1;
    EXPECT_EQ(danced->search(4 * ONE_PLY, MOVE_STRIDE, -100, 100, pv, true, 1), 0);
    danced->unmakeMove(back);

    // Where Black cannot step back into an earlier position, the rook counts.
    auto control = searchBoard("4k3/8/8/8/8/8/8/R3K1N1 w - - 0 1");
    playMoves(*control, {"g1f3", "e8d8"});
    const Move rook = findMove(*control, "a1a2");
    control->makeMove(rook);
    control->resetSearchTables();
    currentRecord(*control).nodeType = 1;
    EXPECT_EQ(control->search(4 * ONE_PLY, MOVE_STRIDE, -100, 100, pv, true, 1), -100);
    control->unmakeMove(rook);

    // The fifty-move rule: the node scores 0 before anything else.
    auto fifty = searchBoard("4k3/8/8/8/8/8/8/R3K1N1 w - - 100 80");
    fifty->resetSearchTables();
    EXPECT_EQ(fifty->search(4 * ONE_PLY, MOVE_STRIDE, -100, 100, pv, true, 1), 0);
    EXPECT_EQ(fifty->nodeCount, 1u);
}

// Searches stopped by node limits at many awkward moments leave the position, its history,
// the repetition stack and the game record exactly as they were.
TEST(Search, LeavesTheBoardAsItFoundItAtEveryStop) {
    const auto suite = loadPerftSuite("tricky.perft");
    ASSERT_FALSE(suite.empty());
    for (std::size_t i = 0; i < suite.size(); i += 3) {
        if (!hasStandardCastling(suite[i].fen))
            continue;
        auto board = searchBoard(suite[i].fen);
        const BoardSnapshot before(*board);
        for (std::int64_t limit : {1, 2, 7, 61, 500, 3001}) {
            board->setTimeMode(TIME_NODES, limit);
            searchRootAt(*board, 5);
            ASSERT_EQ(before.differences(*board), "") << suite[i].fen << " limit " << limit;
        }
        board->setTimeMode(TIME_NODES, 2000);
        board->think();
        if (board->gameMoveCount)
            board->takeBackGameMove();
        EXPECT_EQ(before.differences(*board), "") << suite[i].fen;
    }
}

// A node close to the deepest ply still searches and stays inside the per-ply arrays: the
// sanitizer build checks every index.
TEST(Search, DeepestPliesStayInsideTheirArrays) {
    auto board = searchBoard(KIWIPETE_FEN);
    const BoardSnapshot before(*board);
    board->resetSearchTables();
    for (int ply : {DEEPEST_SEARCH_PLY - 2, DEEPEST_SEARCH_PLY, DEEPEST_SEARCH_PLY + 1}) {
        PrincipalVariation pv;
        pv.clear();
        currentRecord(*board).nodeType = 0;
        const int score = board->search(4 * ONE_PLY, ply * MOVE_STRIDE, -INFINITE_SCORE,
                                        INFINITE_SCORE, pv, true, ply);
        EXPECT_LT(std::abs(score), MATE_BOUND);
        EXPECT_LE(pv.count, std::uint32_t(MAX_PLY - ply));
        EXPECT_EQ(before.differences(*board), "") << ply;
    }
}

// Quiescence stands pat at once when the side to move is already above beta, and never
// searches a capture the ordering marks as losing.
TEST(Search, QuiescenceStandsPatAndSkipsLosingCaptures) {
    auto board = searchBoard("4k3/8/8/8/8/8/8/Q3K3 w - - 0 1");
    board->resetSearchTables();
    EXPECT_EQ(board->quiesce(1, MOVE_STRIDE, -INFINITE_SCORE, 100, true), 100);
    EXPECT_EQ(board->nodeCount, 1u);

    // The only capture takes a defended pawn with the queen.
    auto losing = searchBoard("4k3/8/2p5/3p4/8/8/8/3QK3 w - - 0 1");
    losing->resetSearchTables();
    const int standPat = losing->evaluate(-INFINITE_SCORE, INFINITE_SCORE, 0);
    EXPECT_EQ(losing->quiesce(1, MOVE_STRIDE, -INFINITE_SCORE, INFINITE_SCORE, true), standPat);
    EXPECT_EQ(losing->nodeCount, 1u);

    // Undefended, the same pawn is taken.
    auto winning = searchBoard("4k3/8/8/3p4/8/8/8/3QK3 w - - 0 1");
    winning->resetSearchTables();
    winning->quiesce(1, MOVE_STRIDE, -INFINITE_SCORE, INFINITE_SCORE, true);
    EXPECT_GT(winning->nodeCount, 1u);
}
