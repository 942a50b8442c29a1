// How the next search is bounded, as one value: the mode and its limit, both clocks, both
// increments and the moves to go; and the budget of one move, which is arithmetic on that
// value alone. The protocols, the EPD suite and the bench build it; think() obeys it.
#pragma once

#include "board/types.h"

#include <cstdint>

enum TimeMode : int {
    TIME_DEPTH    = 0,
    TIME_NODES    = 1,
    TIME_MOVETIME = 3,
    TIME_CLOCK    = 5,
    TIME_INFINITE = 7,
};

// Kept in the engine between commands, because a "go" without a mode keeps the previous
// one and increments carry over; a new game puts everything but the clocks back.
struct SearchLimits {
    int timeMode           = TIME_CLOCK;
    int depthOnlyLimit     = 5;
    std::int64_t nodeLimit = 1000000;
    std::uint32_t moveTime = 5000000; // microseconds
    float remainingTime[2] = {0, 0};  // milliseconds, by Color
    int increment[2]       = {0, 0};  // milliseconds, by Color
    int movesToGo          = 40;      // 0: the rest of the game
    // Switches to the mode and stores its value (depth, nodes or microseconds); a mode
    // this engine does not know changes nothing.
    void setTimeMode(int mode, std::int64_t value = 0);
};

// The microseconds the side to move may spend on this move, elapsedMs after its clock was
// last set. Depth and node searches have no time limit: the longest budget there is.
std::uint32_t timeBudget(const SearchLimits& limits, Color toMove, std::uint32_t elapsedMs);

// The rule that ends a clock-mode search after a completed iteration, or NONE.
enum class ClockStop { NONE, SINGLE_MOVE, MATE_SCORES, NO_TIME_FOR_NEXT };
// What the rule reads: whether the root has one legal move, the iteration's score and
// depth, the budget, and the iteration's and the whole search's time (microseconds).
struct IterationClock {
    bool singleMove;
    int score;
    int depth;
    std::uint32_t budget;
    double iterationMicros;
    double totalMicros;
};
// mateScores counts the mate scores seen so far in this search and is raised here.
ClockStop clockRuleStops(const IterationClock& iteration, int& mateScores);
