// The search report after each iteration: the suite's console row first, else the dialect of
// the protocol in use, else nothing; mates and reports after no measurable time.
#include "engine/front_end.h"
#include "test_support.h"

#include <gtest/gtest.h>

TEST(SearchReport, EachDialectAndItsMates) {
    FrontEnd frontEnd(CommandSource{nullptr, nullptr});
    frontEnd.createEngine(0);
    ChessBoardUCI& engine = *frontEnd.board;
    auto printed          = [&](int suite, int dialect, int score, double micros) {
        PrincipalVariation pv;
        pv.count          = 2;
        pv.moves[0]       = makeMoveWord(12, 28, PAWN) | MOVE_DOUBLE;
        pv.moves[1]       = makeMoveWord(52, 36, PAWN) | MOVE_DOUBLE;
        pv.scores[0]      = std::int16_t(score);
        engine.suiteMode  = suite;
        frontEnd.protocol = dialect;
        testing::internal::CaptureStdout();
        engine.printSearchInfo(4, pv, 1000, micros);
        return testing::internal::GetCapturedStdout();
    };
    // The console row writes the line in algebraic text.
    EXPECT_EQ(printed(1, PROTOCOL_UCI, -120, 1e6), " 4 -1.20 00:01:000     1000 1.00 e4 e5 \n");
    EXPECT_EQ(printed(0, PROTOCOL_UCI, -120, 1e6),
              "info depth 4 score cp -120 time 1000 nodes 1000 nps 1000 pv e2e4 e7e5 \n");
    EXPECT_EQ(printed(0, PROTOCOL_XBOARD, -120, 1e6), "4 -120 100 1000 e2e4 e7e5 \n");
    EXPECT_EQ(printed(0, PROTOCOL_NONE, -120, 1e6), "");
    // Being mated puts the sign on the depth and counts whole moves; a score between the mate
    // bound and the shown-as-mate threshold stays in centipawns; no time gives no rate.
    EXPECT_EQ(printed(0, PROTOCOL_UCI, -31993, 1e6).substr(0, 27), "info depth -4 score mate 4 ");
    EXPECT_EQ(printed(0, PROTOCOL_UCI, 31999, 1e6).substr(0, 26), "info depth 4 score mate 1 ");
    EXPECT_EQ(printed(0, PROTOCOL_UCI, 31790, 1e6).substr(0, 28), "info depth 4 score cp 31790 ");
    EXPECT_EQ(printed(0, PROTOCOL_UCI, 0, 0),
              "info depth 4 score cp 0 time 0 nodes 1000 nps 0 pv e2e4 e7e5 \n");
    EXPECT_EQ(printed(1, PROTOCOL_UCI, 31995, 1e6).substr(0, 7), " 4 +M3 ");
}
