// The clocks on POSIX systems: both read the steady clock, the counter in nanoseconds.
#include "platform/clock.h"

#include <chrono>

namespace {

std::chrono::steady_clock::duration sinceStart() {
    return std::chrono::steady_clock::now().time_since_epoch();
}

} // namespace

std::int64_t performanceCounter() {
    return std::chrono::duration_cast<std::chrono::nanoseconds>(sinceStart()).count();
}

std::int64_t performanceFrequency() {
    return 1000000000;
}

std::uint32_t tickCount() {
    return std::uint32_t(
        std::chrono::duration_cast<std::chrono::milliseconds>(sinceStart()).count());
}
