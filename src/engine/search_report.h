// Search reports: the line sent after each completed iteration, in the dialect of the
// protocol in use (or a console row while a test suite runs).
#pragma once

// A mate score as a number of moves, positive for both sides.
int mateInMoves(int score);
