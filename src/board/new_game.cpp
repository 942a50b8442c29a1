// A new game: the initial position and the game-level settings back at their defaults.
#include "board/chess_board.h"

void ChessBoard::newGame() {
    timeMode       = TIME_CLOCK;
    depthOnlyLimit = 5;
    maxDepth       = MAX_PLY;
    timeLimit      = 7500;
    moveTime       = 5000000;
    nodeLimit      = 1000000;
    // 30000 nodes is a few milliseconds of search: quick enough to answer "stop" and
    // "isready" at once, rare enough that reading the clock costs nothing.
    pollInterval     = 30000;
    pollCounter      = 0;
    movesToGo        = 40;
    increment[WHITE] = increment[BLACK] = 0;
    clockRunning[WHITE] = clockRunning[BLACK] = false;
    setPosition(START_FEN);
}
