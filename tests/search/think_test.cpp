// Deciding a move: the hooks in their order, the budget of each time mode, the reports of
// the iterations, the stop rules, and input read at poll nodes.
#include "platform/clock.h"
#include "search_test_board.h"
#include "test_support.h"

#include <chrono>
#include <gtest/gtest.h>

namespace {

const char* const MIDDLEGAME = "r1bq1rk1/pp2bppp/2n1pn2/3p4/2PP4/2N1PN2/PP3PPP/R2QKB1R w KQ - 0 8";

std::uint32_t clockBudget(float remainingMs, int movesToGo, int incrementMs) {
    auto board                  = searchBoard(START_FEN);
    board->remainingTime[WHITE] = remainingMs;
    board->movesToGo            = movesToGo;
    board->increment[WHITE]     = incrementMs;
    board->setTimeMode(TIME_CLOCK);
    board->computeTimeLimit();
    return board->timeLimit;
}

} // namespace

TEST(TimeControl, BudgetOfEachMode) {
    EXPECT_EQ(clockBudget(60000, 0, 0), 1500000u);
    EXPECT_EQ(clockBudget(60000, 0, 2000), 3500000u);
    EXPECT_EQ(clockBudget(60000, 1, 0), 30000000u);
    EXPECT_EQ(clockBudget(60000, 40, 0), 1500000u);
    EXPECT_EQ(clockBudget(-500, 40, 0), 0u); // a clock that has run out gives no time

    auto board = searchBoard(START_FEN);
    board->setTimeMode(TIME_MOVETIME, 2500000);
    board->computeTimeLimit();
    EXPECT_EQ(board->timeLimit, 2500000u);
    board->setTimeMode(TIME_INFINITE);
    board->computeTimeLimit();
    EXPECT_EQ(board->timeLimit, 0xFFFFFFFFu);
    board->setTimeMode(4, 77); // no such mode: nothing changes
    EXPECT_EQ(board->timeMode, TIME_INFINITE);

    // A running clock loses the time since it started.
    board->setTimeMode(TIME_CLOCK);
    board->remainingTime[BLACK] = 0;
    board->setPosition("4k3/8/8/8/8/8/8/4K3 b - - 0 1");
    board->remainingTime[BLACK] = 40000;
    board->movesToGo            = 40;
    board->clockRunning[BLACK]  = true;
    board->clockStart[BLACK]    = tickCount() - 20000;
    board->computeTimeLimit();
    EXPECT_NEAR(double(board->timeLimit), 500000.0, 5000.0);
}

// The hooks come in their order, each completed depth is reported once and in order (an
// aspiration failure repeats its depth silently), and the move played is the last line's.
TEST(Think, DepthOnlySearchReportsEachDepthAndPlaysItsLine) {
    for (const char* fen :
         {MIDDLEGAME, "2rr3k/pp3pp1/1nnqbN1p/3pN3/2pP4/2P3Q1/PPB4P/R4RK1 w - - 0 1"}) {
        auto board = searchBoard(fen);
        thinkToDepth(*board, 6);
        ASSERT_EQ(board->reports.size(), 6u) << fen;
        for (int d = 0; d < 6; ++d)
            EXPECT_EQ(board->reports[d].depth, d + 1);
        EXPECT_EQ(board->lastMove, board->reports.back().line.at(0));
        EXPECT_EQ(board->sentMove, board->lastMove);
        EXPECT_EQ(board->gameMoveCount, 1);
        EXPECT_EQ(board->repetitionTop, 2);
        EXPECT_EQ(board->hookCalls, (std::vector<std::string>{"thinkStarted", "searchStarted",
                                                              "sendMove", "thinkEnded"}));
        EXPECT_EQ(board->thinking, 0);
    }
}

TEST(Think, ClockModeStopsAtOnceWithASingleMove) {
    auto board                  = searchBoard("k7/8/8/8/8/8/1q6/K7 w - - 0 1");
    board->remainingTime[WHITE] = 600000;
    board->setTimeMode(TIME_CLOCK);
    board->think();
    ASSERT_EQ(board->reports.size(), 1u);
    EXPECT_TRUE(board->singleMove);
    EXPECT_EQ(board->lastMove, board->reports[0].line.at(0));
}

// A limit that ends the deepening after a completed iteration keeps that iteration's move:
// the move played is the line of the last depth reported, the first one included.
TEST(Think, DepthLimitPlaysTheLastReportedLine) {
    for (const char* fen : {MIDDLEGAME, KIWIPETE_FEN, START_FEN}) {
        for (int limit = 1; limit <= 5; ++limit) {
            auto board      = searchBoard(fen);
            board->maxDepth = limit;
            board->setTimeMode(TIME_INFINITE);
            board->think();
            ASSERT_EQ(board->reports.size(), std::size_t(limit)) << fen;
            EXPECT_EQ(board->sentMove, board->reports.back().line.at(0)) << fen << " " << limit;
        }
    }
}

// A checkmated position has no move to play: the move hook still runs, with no move.
TEST(Think, NoMoveOnAMatedBoard) {
    auto board = searchBoard("R5k1/5ppp/8/8/8/8/8/6K1 b - - 0 1");
    thinkToDepth(*board, 3);
    EXPECT_EQ(board->sentMove, NO_MOVE);
    EXPECT_EQ(board->gameMoveCount, 0);
    EXPECT_EQ(board->hookCalls.back(), "thinkEnded");
}

// A behaviour check with generous bounds, not a benchmark.
TEST(Think, MoveTimeIsKept) {
    auto board = searchBoard(MIDDLEGAME);
    board->setTimeMode(TIME_MOVETIME, 200000);
    board->pollInterval = 2000;
    const auto start    = std::chrono::steady_clock::now();
    board->think();
    const double ms =
        std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
    EXPECT_GE(ms, 150.0);
    EXPECT_LT(ms, 1500.0);
    EXPECT_NE(board->sentMove, NO_MOVE);
}

// At poll nodes the search asks the input test and reads the waiting command, which can
// stop it; the move of the last completed iteration is then played.
TEST(Think, CommandReadAtAPollNodeStopsTheSearch) {
    auto board = searchBoard(KIWIPETE_FEN);
    const BoardSnapshot before(*board);
    board->inputPoll    = [] { return 1; };
    board->pollInterval = 5000;
    board->onCommand    = [](RecordingBoard& b) {
        if (b.commandsRead == 20)
            b.stopSearch = 1;
    };
    board->setTimeMode(TIME_INFINITE);
    board->think();
    EXPECT_EQ(board->commandsRead, 20);
    // Every node entered counts towards the poll, so the stop comes within 20 intervals.
    EXPECT_LE(board->nodeCount, 20u * 5000u);
    EXPECT_GT(board->nodeCount, 10u * 5000u);
    ASSERT_FALSE(board->reports.empty());
    EXPECT_NE(board->sentMove, NO_MOVE);
    board->takeBackGameMove();
    EXPECT_EQ(before.differences(*board), "");

    // Without an input test nothing is ever read.
    auto quiet          = searchBoard(KIWIPETE_FEN);
    quiet->pollInterval = 100;
    thinkToDepth(*quiet, 3);
    EXPECT_EQ(quiet->commandsRead, 0);
}

// A node limit ends the search wherever it falls, and the last completed iteration's move
// is played.
TEST(Think, NodeLimitStopsTheSearch) {
    auto board = searchBoard(MIDDLEGAME);
    board->setTimeMode(TIME_NODES, 20000);
    board->think();
    EXPECT_EQ(board->nodeCount, 20000u);
    ASSERT_FALSE(board->reports.empty());
    EXPECT_NE(board->sentMove, NO_MOVE);
}
