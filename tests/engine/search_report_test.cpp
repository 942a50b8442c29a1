// The search reports in their three dialects, and the dialect chosen for the protocol.
#include "engine/front_end.h"
#include "engine/search_report.h"
#include "test_support.h"

#include <gtest/gtest.h>

namespace {

PrincipalVariation lineOf(int score, std::initializer_list<Move> moves) {
    PrincipalVariation pv;
    pv.clear();
    for (Move m : moves)
        pv.moves[pv.count++] = m;
    pv.scores[0] = std::int16_t(score);
    return pv;
}

constexpr Move E2E4 = makeMoveWord(12, 28, PAWN) | MOVE_DOUBLE;
constexpr Move E7E5 = makeMoveWord(52, 36, PAWN) | MOVE_DOUBLE;

std::string uci(int depth, const PrincipalVariation& pv, std::uint64_t nodes, double micros) {
    char out[REPORT_LINE_SIZE];
    formatUciInfo(out, depth, pv, nodes, micros);
    return out;
}

} // namespace

TEST(SearchReport, UciInfoLines) {
    EXPECT_EQ(uci(6, lineOf(35, {E2E4, E7E5}), 120000, 250000),
              "info depth 6 score cp 35 time 250 nodes 120000 nps 480000 pv e2e4 e7e5 ");
    // Being mated: the sign goes on the depth, and the mate count stays positive.
    EXPECT_EQ(uci(9, lineOf(-31993, {E2E4}), 1000, 1000000),
              "info depth -9 score mate 4 time 1000 nodes 1000 nps 1000 pv e2e4 ");
    EXPECT_EQ(uci(3, lineOf(31999, {E2E4}), 10, 1000000).substr(0, 26),
              "info depth 3 score mate 1 ");
    // Between the mate bound and the shown-as-mate threshold a score stays in centipawns.
    EXPECT_EQ(uci(3, lineOf(31790, {}), 10, 1000000).substr(0, 28), "info depth 3 score cp 31790 ");
    // A promotion shows no piece letter.
    EXPECT_EQ(uci(1, lineOf(0, {makeMoveWord(52, 60, PAWN, EMPTY, KNIGHT)}), 1, 1000000),
              "info depth 1 score cp 0 time 1000 nodes 1 nps 1 pv e7e8 ");
    // No measurable time gives no rate.
    EXPECT_EQ(uci(1, lineOf(0, {}), 5, 0), "info depth 1 score cp 0 time 0 nodes 5 nps 0 pv ");
}

// The dialect follows the suite mode first, then the protocol; with no protocol nothing.
TEST(SearchReport, DialectFollowsSuiteModeThenProtocol) {
    FrontEnd frontEnd(CommandSource{nullptr, nullptr});
    ChessBoardUCI engine(frontEnd);
    engine.initTables(0);
    engine.newGame();
    const PrincipalVariation pv = lineOf(-120, {E2E4, E7E5});
    auto printed                = [&](int suite, int dialect) {
        engine.suiteMode  = suite;
        frontEnd.protocol = dialect;
        testing::internal::CaptureStdout();
        engine.printSearchInfo(4, pv, 1000, 1000000);
        return testing::internal::GetCapturedStdout();
    };
    // The suite's console row writes the line in algebraic text.
    EXPECT_EQ(printed(1, PROTOCOL_UCI), " 4 -1.20 00:01:000     1000 1.00 e4 e5 \n");
    EXPECT_EQ(printed(0, PROTOCOL_UCI),
              "info depth 4 score cp -120 time 1000 nodes 1000 nps 1000 pv e2e4 e7e5 \n");
    EXPECT_EQ(printed(0, PROTOCOL_XBOARD), "4 -120 100 1000 e2e4 e7e5 \n");
    EXPECT_EQ(printed(0, PROTOCOL_NONE), "");
}
