// Time control on the running search: the budget taken from the limits when a search starts,
// and the clock and input check of the poll nodes. The budget's arithmetic is in
// search_limits.cpp; the iterations that obey it, and checkTime, live in think.cpp.
#include "board/chess_board.h"
#include "platform/clock.h"

std::uint32_t ChessBoard::elapsedMicros() const {
    const double micros =
        double(performanceCounter() - searchStart) * 1e6 / double(performanceFrequency());
    // Kept in 32 bits like the budget: the count wraps after 71 minutes.
    return std::uint32_t(std::uint64_t(micros));
}

bool ChessBoard::pollStopsSearch() {
    const int mode = limits.timeMode;
    if (mode != TIME_DEPTH && mode != TIME_NODES && timeLimit <= elapsedMicros()) {
        stopSearch = 1;
        return true;
    }
    if (inputPoll && inputPoll())
        readCommand();
    return stopSearch != 0;
}

void ChessBoard::computeTimeLimit() {
    const Color side = Color(sideToMove);
    // A clock still running since it was set has lost the time gone by meanwhile.
    const std::uint32_t elapsedMs = clockRunning[side] ? tickCount() - clockStart[side] : 0;
    timeLimit                     = timeBudget(limits, side, elapsedMs);
    searchStart                   = performanceCounter();
}
