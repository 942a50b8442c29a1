// The search limits' setter, the budget of one move for each time mode, and the rules that
// end a clock-mode search between iterations: all arithmetic, with no clock read here.
#include "search/search_limits.h"

#include <algorithm>
#include <climits>
#include <cmath>
#include <cstdlib>

namespace {

// A budget in microseconds, rounded to the nearest; a negative or undefined one (a clock
// that has run out, a nonsense command) is no time at all, a huge one the longest there is.
std::uint32_t budgetMicros(float micros) {
    if (!(micros > 0))
        return 0;
    if (micros >= 4294967295.0f)
        return 0xFFFFFFFFu;
    return std::uint32_t(std::lround(micros));
}

// The clock's share for this move: a fortieth of it plus the increment when the rest of the
// game must be played on it, half of it for the last move of a session, else an equal share.
std::uint32_t clockBudget(const SearchLimits& limits, Color side, std::uint32_t elapsedMs) {
    const float left = limits.remainingTime[side] - float(elapsedMs);
    float micros;
    if (limits.movesToGo == 0)
        micros = limits.increment[side] < 1
                     ? left * 1000 / 40
                     : float(limits.increment[side]) * 1000 + left * 1000 / 40;
    else if (limits.movesToGo == 1)
        micros = left * 1000 * 0.5f;
    else
        micros = left * 1000 / float(limits.movesToGo);
    return budgetMicros(micros);
}

} // namespace

void SearchLimits::setTimeMode(int mode, std::int64_t value) {
    switch (mode) {
    case TIME_DEPTH:
        depthOnlyLimit = int(std::clamp<std::int64_t>(value, INT32_MIN, INT32_MAX));
        break;
    case TIME_NODES:
        nodeLimit = value;
        break;
    case TIME_MOVETIME:
        // A budget past the 32-bit microsecond count (71 minutes) is the longest one.
        moveTime = std::uint32_t(std::clamp<std::int64_t>(value, 0, 0xFFFFFFFF));
        break;
    case TIME_CLOCK:
    case TIME_INFINITE:
        break;
    default:
        return;
    }
    timeMode = mode;
}

std::uint32_t timeBudget(const SearchLimits& limits, Color toMove, std::uint32_t elapsedMs) {
    switch (limits.timeMode) {
    case TIME_MOVETIME:
        return limits.moveTime;
    case TIME_CLOCK:
        return clockBudget(limits, toMove, elapsedMs);
    default:
        return 0xFFFFFFFFu;
    }
}

// Two mate scores in the search (not necessarily in a row) past depth 6 settle it, and so
// does an iteration that leaves too little time for the next one, which takes longer than
// all before it.
ClockStop clockRuleStops(const IterationClock& it, int& mateScores) {
    if (it.singleMove)
        return ClockStop::SINGLE_MOVE;
    if (std::abs(it.score) >= MATE_BOUND && ++mateScores > 1 && it.depth > 6)
        return ClockStop::MATE_SCORES;
    if (double(it.budget) * 0.8 < it.iterationMicros * 0.6 + it.totalMicros)
        return ClockStop::NO_TIME_FOR_NEXT;
    return ClockStop::NONE;
}
