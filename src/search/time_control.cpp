// Time control: the budget of one move for each time mode, the clock and input check of
// the poll nodes, and the one setter of the time mode. The iterations that obey the budget,
// and checkTime, which takes the nodes' own stop-and-poll step, live in think.cpp.
#include "board/chess_board.h"
#include "platform/clock.h"

#include <algorithm>
#include <cmath>

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

} // namespace

std::uint32_t ChessBoard::elapsedMicros() const {
    const double micros =
        double(performanceCounter() - searchStart) * 1e6 / double(performanceFrequency());
    // Kept in 32 bits like the budget: the count wraps after 71 minutes.
    return std::uint32_t(std::uint64_t(micros));
}

bool ChessBoard::pollStopsSearch() {
    if (timeMode != TIME_DEPTH && timeMode != TIME_NODES && timeLimit <= elapsedMicros()) {
        stopSearch = 1;
        return true;
    }
    if (inputPoll && inputPoll())
        readCommand();
    return stopSearch != 0;
}

void ChessBoard::computeTimeLimit() {
    switch (timeMode) {
    case TIME_DEPTH:
        return;
    case TIME_MOVETIME:
        timeLimit = moveTime;
        break;
    case TIME_CLOCK: {
        const int side = sideToMove;
        float left     = remainingTime[side];
        if (clockRunning[side])
            left -= float(tickCount() - clockStart[side]);
        float micros;
        if (movesToGo == 0)
            micros = increment[side] < 1 ? left * 1000 / 40
                                         : float(increment[side]) * 1000 + left * 1000 / 40;
        else if (movesToGo == 1)
            micros = left * 1000 * 0.5f;
        else
            micros = left * 1000 / float(movesToGo);
        timeLimit = budgetMicros(micros);
        break;
    }
    case TIME_INFINITE:
        timeLimit = 0xFFFFFFFFu;
        break;
    default:
        break;
    }
    searchStart = performanceCounter();
}

void ChessBoard::setTimeMode(int mode, std::int64_t value) {
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
