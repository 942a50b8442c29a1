// The chess clocks' tick count: milliseconds from the steady clock, the unit the clock
// fields (clockStart, remainingTime) are kept in.
#pragma once

#include <cstdint>

std::uint32_t tickCount();
