// The clocks on Windows: the performance counter for the search and the profiler, and
// GetTickCount for the chess clocks.
#include "platform/clock.h"

#include <windows.h>

std::int64_t performanceCounter() {
    LARGE_INTEGER now;
    QueryPerformanceCounter(&now);
    return now.QuadPart;
}

std::int64_t performanceFrequency() {
    LARGE_INTEGER rate;
    // The call cannot fail on Windows XP and later; a zero rate would divide by zero.
    return QueryPerformanceFrequency(&rate) && rate.QuadPart > 0 ? rate.QuadPart : 1000;
}

std::uint32_t tickCount() {
    return GetTickCount();
}
