// A small section profiler: named sections with call counts and total, shortest and longest
// times from the performance counter, and a report with one row per section. It is a
// developer's tool: wrap the code under study in profileEnter/profileLeave and print the
// table to see where the time goes; no release path calls it.
#pragma once

#include <cstdint>

struct ProfileSection {
    const char* name;
    std::int64_t totalTicks;
    std::int64_t shortestTicks;
    std::int64_t longestTicks;
    std::int32_t calls;
};

constexpr int MAX_PROFILE_SECTIONS = 64;

// Opens a timed section by name (found or added; past the last record nothing is timed)
// and returns its handle, -1 when the table is full.
int profileEnter(const char* name);
void profileLeave(int handle);
// Writes the header line and one row per section to standard output.
void printProfile();
// Forgets every section.
void resetProfile();
