// The clocks: the high-resolution counter the search and the profiler time themselves with,
// and the millisecond tick count the running chess clocks are kept in. One implementation
// file per system.
#pragma once

#include <cstdint>

// A monotonic tick count and its rate in ticks per second.
std::int64_t performanceCounter();
std::int64_t performanceFrequency();
// Milliseconds from an arbitrary start, wrapping at 32 bits (about 49 days): differences
// of two readings are right across the wrap.
std::uint32_t tickCount();
