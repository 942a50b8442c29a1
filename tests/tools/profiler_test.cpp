// The profiler's table of sections: one record per name, counted calls, a full table that
// times nothing more, and a report row per section.
#include "tools/profiler.h"

#include <algorithm>
#include <cstdio>
#include <gtest/gtest.h>
#include <string>
#include <vector>

TEST(Profiler, OneRecordPerNameUntilTheTableIsFull) {
    resetProfile();
    const int search = profileEnter("search");
    profileLeave(search);
    EXPECT_EQ(profileEnter("search"), search);
    profileLeave(search);
    const std::vector<std::string> names = [] {
        std::vector<std::string> all;
        for (int i = 0; i < MAX_PROFILE_SECTIONS; ++i)
            all.push_back("section " + std::to_string(i));
        return all;
    }();
    int last = search;
    for (const std::string& name : names)
        last = profileEnter(name.c_str());
    EXPECT_EQ(last, -1) << "the 65th name has no record";
    profileLeave(last);
    profileLeave(MAX_PROFILE_SECTIONS);

    testing::internal::CaptureStdout();
    printProfile();
    const std::string report = testing::internal::GetCapturedStdout();
    EXPECT_EQ(report.rfind("Name, Count, Total Time, Average Time, Min, Max\n", 0), 0u);
    EXPECT_EQ(std::count(report.begin(), report.end(), '\n'), MAX_PROFILE_SECTIONS + 1);
    const std::size_t row = report.find("search");
    ASSERT_NE(row, std::string::npos);
    int calls = 0;
    EXPECT_EQ(std::sscanf(report.c_str() + row + 6, "%d", &calls), 1);
    EXPECT_EQ(calls, 2) << report;
    resetProfile();
}
