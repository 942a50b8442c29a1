// The clocks in a browser or under Node: emscripten_get_now() is performance.now() in a page
// or a worker and a monotonic high-resolution time under Node, in milliseconds with a
// fraction. The counter is kept in microseconds, finer than the timers browsers expose.
#include "platform/clock.h"

#include <emscripten.h>

std::int64_t performanceCounter() {
    return std::int64_t(emscripten_get_now() * 1000.0);
}

std::int64_t performanceFrequency() {
    return 1000000;
}

std::uint32_t tickCount() {
    return std::uint32_t(std::int64_t(emscripten_get_now()));
}
