// The time budget and the clock-mode stop rules, from tables of limits and iteration times
// with no clock read; checkTime, the thread routine, and a clock-mode search with one move.
#include "search/search_limits.h"
#include "search_test_board.h"
#include "test_support.h"

#include <gtest/gtest.h>

// Each case, and the same case with the colours swapped throughout, gives its budget. The
// clocks and increments are unequal, so reading the other side's gives another budget.
TEST(TimeBudget, EveryModeWithEachColourToMove) {
    struct Case {
        int mode;
        float clock[2]; // milliseconds, by Color (BLACK, WHITE)
        int increment[2], movesToGo;
        std::uint32_t moveTime, elapsedMs;
        int toMove;
        std::uint32_t budget; // microseconds
    };
    // clang-format off
    const Case cases[] = {
        // The rest of the game on the clock: a fortieth of it, plus the increment if any.
        {TIME_CLOCK,    {20000, 60000}, {500, 2000}, 0,  0, 0,    WHITE, 3500000},
        {TIME_CLOCK,    {20000, 60000}, {500, 2000}, 0,  0, 0,    BLACK, 1000000},
        {TIME_CLOCK,    {20000, 60000}, {-5, 0},     0,  0, 0,    BLACK, 500000},
        // The last move of a session takes half the clock, an earlier one an equal share.
        {TIME_CLOCK,    {20000, 60000}, {5000, 0},   1,  0, 0,    BLACK, 10000000},
        {TIME_CLOCK,    {20000, 60000}, {0, 5000},   20, 0, 0,    WHITE, 3000000},
        // Time gone since the clock was set is off it; a clock that ran out gives no time,
        // one beyond the 32-bit count the longest budget.
        {TIME_CLOCK,    {20000, 60000}, {0, 0},      20, 0, 4000, BLACK, 800000},
        {TIME_CLOCK,    {300, 60000},   {0, 0},      40, 0, 500,  BLACK, 0},
        {TIME_CLOCK,    {300, 5e9f},    {0, 0},      40, 0, 0,    WHITE, 0xFFFFFFFF},
        // The other modes ignore the clocks.
        {TIME_MOVETIME, {20000, 60000}, {0, 0},      40, 2500000, 900, BLACK, 2500000},
        {TIME_INFINITE, {20000, 60000}, {0, 0},      40, 0, 0,    WHITE, 0xFFFFFFFF},
        {TIME_DEPTH,    {20000, 60000}, {0, 0},      40, 0, 0,    BLACK, 0xFFFFFFFF},
        {TIME_NODES,    {20000, 60000}, {0, 0},      40, 0, 0,    WHITE, 0xFFFFFFFF},
    };
    // clang-format on
    for (const Case& c : cases)
        for (int flip : {0, 1}) {
            SearchLimits limits;
            for (int side : {BLACK, WHITE}) {
                limits.remainingTime[side ^ flip] = c.clock[side];
                limits.increment[side ^ flip]     = c.increment[side];
            }
            limits.movesToGo = c.movesToGo;
            limits.setTimeMode(c.mode, c.moveTime);
            EXPECT_EQ(timeBudget(limits, Color(c.toMove ^ flip), c.elapsedMs), c.budget)
                << "mode " << c.mode << ", to move " << (c.toMove ^ flip) << ", to go "
                << c.movesToGo;
        }
}

// After each iteration of a clock-mode search: a single legal move stops at once; the second
// mate score stops past depth 6 (the first only counts); otherwise the search stops when 0.8
// of the budget is less than the time so far plus 0.6 of the last iteration.
TEST(TimeBudget, ClockModeStopRules) {
    struct Case {
        IterationClock iteration;
        int matesBefore;
        ClockStop stop;
        int matesAfter;
    };
    const int mate = MATE_SCORE - 5, big = 100000000;
    // clang-format off
    const Case cases[] = {
        {{true,  mate,  1, big,     0,       0},      0, ClockStop::SINGLE_MOVE,      0},
        {{false, mate,  8, big,     1000,    1000},   0, ClockStop::NONE,             1},
        {{false, -mate, 8, big,     1000,    1000},   1, ClockStop::MATE_SCORES,      2},
        {{false, mate,  6, big,     1000,    1000},   1, ClockStop::NONE,             2},
        {{false, 300,   9, big,     1000,    1000},   1, ClockStop::NONE,             1},
        {{false, 0,     5, 1000000, 500000,  500000}, 0, ClockStop::NONE,             0},
        {{false, 0,     5, 1000000, 500000,  500001}, 0, ClockStop::NO_TIME_FOR_NEXT, 0},
        {{false, 0,     5, 1000000, 1000000, 200000}, 0, ClockStop::NONE,             0},
        {{false, 0,     5, 1000000, 1000000, 200001}, 0, ClockStop::NO_TIME_FOR_NEXT, 0},
    };
    // clang-format on
    for (const Case& c : cases) {
        int mates = c.matesBefore;
        EXPECT_EQ(clockRuleStops(c.iteration, mates), c.stop)
            << "score " << c.iteration.score << " depth " << c.iteration.depth << " time "
            << c.iteration.iterationMicros << "+" << c.iteration.totalMicros;
        EXPECT_EQ(mates, c.matesAfter) << "score " << c.iteration.score;
    }
}

// checkTime takes the nodes' step: false once the search is told to stop or its node limit
// is reached. The thread routine thinks and plays a move; on the clock, a single legal move
// is played after the first iteration.
TEST(TimeBudget, CheckTimeTheThreadRoutineAndASingleMove) {
    auto board = searchBoard(START_FEN);
    board->limits.setTimeMode(TIME_NODES, 100);
    board->resetSearchTables();
    for (const auto& [nodes, stop, goesOn] :
         {std::tuple{99, 0, true}, {100, 0, false}, {0, 1, false}}) {
        board->nodeCount  = std::uint64_t(nodes);
        board->stopSearch = stop;
        EXPECT_EQ(board->checkTime(), goesOn) << nodes << " nodes, stop " << stop;
    }
    board->limits.setTimeMode(TIME_DEPTH, 2);
    EXPECT_EQ(ChessBoard::startThinkingThread(board.get()), 0u);
    EXPECT_TRUE(board->sentMove != NO_MOVE && board->sentMove == board->lastMove);
    EXPECT_EQ(board->gameMoveCount, 1);

    auto single                         = searchBoard("k7/8/8/8/8/8/1q6/K7 w - - 0 1");
    single->limits.remainingTime[WHITE] = 600000;
    single->limits.setTimeMode(TIME_CLOCK);
    const std::vector<Move> legal = legalMoves(*single);
    ASSERT_EQ(legal.size(), 1u);
    single->think();
    EXPECT_EQ(single->reports.size(), 1u);
    EXPECT_EQ(single->sentMove, legal[0]);
}
