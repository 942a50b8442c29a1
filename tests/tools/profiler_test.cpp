// The profiler's table of sections: one record per name, counted calls, a full table that
// times nothing more, and a report row per section; the perft report that prints it.
#include "test_support.h"
#include "tools/profiler.h"

#include <cstdio>
#include <gtest/gtest.h>
#include <string>
#include <vector>

TEST(Profiler, OneRecordPerNameUntilTheTableIsFull) {
    resetProfile();
    for (int call = 0; call < 2; ++call)
        profileLeave(profileEnter("search"));
    std::vector<std::string> names(MAX_PROFILE_SECTIONS, "section ");
    int last = 0;
    for (std::size_t i = 0; i < names.size(); ++i)
        last = profileEnter((names[i] += std::to_string(i)).c_str());
    EXPECT_EQ(last, -1) << "the 65th name has no record";
    profileLeave(last);
    testing::internal::CaptureStdout();
    printProfile();
    const std::string report = testing::internal::GetCapturedStdout();
    EXPECT_EQ(report.rfind("Name, Count, Total Time, Average Time, Min, Max\n", 0), 0u);
    EXPECT_EQ(std::count(report.begin(), report.end(), '\n'), MAX_PROFILE_SECTIONS + 1);
    int calls = 0;
    EXPECT_EQ(std::sscanf(report.c_str() + report.find("search") + 6, "%d", &calls), 1);
    EXPECT_EQ(calls, 2) << report;
    resetProfile();
}

TEST(Profiler, ThePerftReportStoresEachDepthAndPrintsTheProfile) {
    resetProfile();
    auto board = boardFrom(START_FEN);
    testing::internal::CaptureStdout();
    board->perftReport(3);
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "Name, Count, Total Time, Average Time, Min, Max\n");
    const PerftCounters* rows = board->perftRows;
    EXPECT_TRUE(rows[1].nodes == 20 && rows[2].nodes == 400 && rows[3].nodes == 8902);
    EXPECT_TRUE(rows[3].captures == 34 && rows[3].checks == 12);
    // The divide report counts one ply deeper than it is asked: 20 replies to each first move.
    ASSERT_EQ(board->divideReport(1), 20);
    for (int i = 0; i < 20; ++i)
        EXPECT_EQ(board->divideRows[i].count, 20u) << board->divideRows[i].text;
}
