// A new game: the initial position and the game-level settings back at their defaults.
#include "board/chess_board.h"

void ChessBoard::newGame() {
    // The clocks stay: an interface sets them again before the engine's first move.
    const SearchLimits previous = limits;
    limits                      = SearchLimits{};
    limits.remainingTime[WHITE] = previous.remainingTime[WHITE];
    limits.remainingTime[BLACK] = previous.remainingTime[BLACK];
    maxDepth                    = MAX_PLY;
    timeLimit                   = 7500;
    // 30000 nodes is a few milliseconds of search: quick enough to answer "stop" and
    // "isready" at once, rare enough that reading the clock costs nothing.
    pollInterval        = 30000;
    pollCounter         = 0;
    clockRunning[WHITE] = clockRunning[BLACK] = false;
    setPosition(START_FEN);
}
