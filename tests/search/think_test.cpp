// Deciding a move: the budget of each time mode, the hooks in their order, the reports of
// the iterations, the stop rules, and input read at poll nodes.
#include "platform/clock.h"
#include "search_test_board.h"
#include "test_support.h"

#include <gtest/gtest.h>

TEST(TimeControl, BudgetOfEachMode) {
    // Mode, milliseconds left, moves to go, increment, mode value, budget in microseconds.
    const std::int64_t cases[][6] = {
        {TIME_CLOCK, 60000, 0, 0, 0, 1500000},   {TIME_CLOCK, 60000, 0, 2000, 0, 3500000},
        {TIME_CLOCK, 60000, 1, 0, 0, 30000000},  {TIME_CLOCK, 60000, 40, 0, 0, 1500000},
        {TIME_CLOCK, -500, 40, 0, 0, 0},         {TIME_MOVETIME, 0, 40, 0, 2500000, 2500000},
        {TIME_INFINITE, 0, 40, 0, 0, 0xFFFFFFFF}};
    for (const auto& c : cases) {
        auto board                  = searchBoard(START_FEN);
        board->remainingTime[WHITE] = float(c[1]);
        board->movesToGo            = int(c[2]);
        board->increment[WHITE]     = int(c[3]);
        board->setTimeMode(int(c[0]), c[4]);
        board->computeTimeLimit();
        EXPECT_EQ(board->timeLimit, std::uint32_t(c[5])) << c[0] << " " << c[1];
    }
    // A running clock loses the time since it started; an unknown mode changes nothing.
    auto board = searchBoard("4k3/8/8/8/8/8/8/4K3 b - - 0 1");
    board->setTimeMode(4, 77);
    EXPECT_EQ(board->timeMode, TIME_CLOCK);
    board->remainingTime[BLACK] = 40000;
    board->clockRunning[BLACK]  = true;
    board->clockStart[BLACK]    = tickCount() - 20000;
    board->computeTimeLimit();
    EXPECT_NEAR(double(board->timeLimit), 500000.0, 5000.0);
}

// Each completed depth is reported once and in order (an aspiration failure repeats its depth
// silently), and the move played is the last line's. A checkmated side has no move: the move
// hook still runs, with none.
TEST(Think, EachDepthIsReportedOnceAndTheLastLinesMoveIsPlayed) {
    for (const char* fen : {KIWIPETE_FEN, START_FEN, "R5k1/5ppp/8/8/8/8/8/6K1 b - - 0 1"}) {
        auto board      = searchBoard(fen);
        board->maxDepth = 5;
        board->sentMove = 0xDEAD;
        board->setTimeMode(TIME_INFINITE);
        board->think();
        ASSERT_FALSE(board->reports.empty()) << fen;
        if (board->reports.back().line.empty()) {
            EXPECT_EQ(board->sentMove, NO_MOVE);
            continue;
        }
        ASSERT_EQ(board->reports.size(), 5u) << fen;
        for (int d = 0; d < 5; ++d)
            EXPECT_EQ(board->reports[d].depth, d + 1) << fen;
        EXPECT_EQ(board->sentMove, board->reports.back().line[0]) << fen;
        EXPECT_EQ(board->lastMove, board->sentMove) << fen;
    }
}

// In clock mode a single legal move is played after the first iteration.
TEST(Think, ASingleLegalMoveIsPlayedAfterOneIteration) {
    auto board                  = searchBoard("k7/8/8/8/8/8/1q6/K7 w - - 0 1");
    board->remainingTime[WHITE] = 600000;
    board->setTimeMode(TIME_CLOCK);
    board->think();
    EXPECT_EQ(board->reports.size(), 1u);
}

// At poll nodes the search asks the input test and reads the waiting command, which can
// stop it; the move of the last completed iteration is then played. Without an input test
// nothing is ever read.
TEST(Think, CommandReadAtAPollNodeStopsTheSearch) {
    auto board = searchBoard(KIWIPETE_FEN);
    const BoardSnapshot before(*board);
    board->inputPoll    = [] { return 1; };
    board->pollInterval = 5000;
    board->onCommand    = [](RecordingBoard& b) {
        b.stopSearch = b.stopSearch || b.commandsRead == 20;
    };
    board->setTimeMode(TIME_INFINITE);
    board->think();
    EXPECT_EQ(board->commandsRead, 20);
    // Every node entered counts towards the poll, so the stop comes within 20 intervals.
    EXPECT_LE(board->nodeCount, 20u * 5000u);
    EXPECT_GT(board->nodeCount, 10u * 5000u);
    EXPECT_EQ(board->sentMove, board->reports.back().line.at(0));
    board->takeBackGameMove();
    EXPECT_TRUE(before.matches(*board));

    board->inputPoll = nullptr;
    thinkToDepth(*board, 3);
    EXPECT_EQ(board->commandsRead, 20);
}
