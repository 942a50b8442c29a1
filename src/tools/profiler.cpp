// The profiler's one table of sections, timed with the performance counter.
#include "tools/profiler.h"

#include "platform/clock.h"

#include <cstdio>
#include <cstring>

namespace {

ProfileSection sections[MAX_PROFILE_SECTIONS];
int sectionCount = 0;
std::int64_t enteredAt[MAX_PROFILE_SECTIONS];

} // namespace

int profileEnter(const char* name) {
    int handle = 0;
    while (handle < sectionCount && std::strcmp(sections[handle].name, name) != 0)
        ++handle;
    if (handle == sectionCount) {
        if (sectionCount == MAX_PROFILE_SECTIONS)
            return -1;
        sections[sectionCount++] = {name, 0, INT64_MAX, 0, 0};
    }
    enteredAt[handle] = performanceCounter();
    return handle;
}

void profileLeave(int handle) {
    if (handle < 0 || handle >= sectionCount)
        return;
    std::int64_t ticks = performanceCounter() - enteredAt[handle];
    ProfileSection& s  = sections[handle];
    s.totalTicks += ticks;
    if (ticks < s.shortestTicks)
        s.shortestTicks = ticks;
    if (ticks > s.longestTicks)
        s.longestTicks = ticks;
    ++s.calls;
}

void resetProfile() {
    sectionCount = 0;
}

void printProfile() {
    std::printf("Name, Count, Total Time, Average Time, Min, Max\n");
    const double toMicros = 1000000.0 / double(performanceFrequency());
    for (int i = 0; i < sectionCount; ++i) {
        const ProfileSection& s = sections[i];
        double total            = double(s.totalTicks) * toMicros;
        // A section entered but never left has no calls: its average prints as nan or inf.
        double average = total / s.calls;
        char count[32], totalText[64], averageText[64], minText[64], maxText[64];
        std::snprintf(count, sizeof count, "%8d", s.calls);
        std::snprintf(totalText, sizeof totalText, "%8.6f", total);
        std::snprintf(averageText, sizeof averageText, "%8.6f", average);
        std::snprintf(minText, sizeof minText, "%8.6f", double(s.shortestTicks) * toMicros);
        std::snprintf(maxText, sizeof maxText, "%8.6f", double(s.longestTicks) * toMicros);
        std::printf("%32s %16s %16s %16s %16s %16s\n", s.name, count, totalText, averageText,
                    minText, maxText);
    }
    std::fflush(stdout);
}
