// The best-move test suite: positions from an EPD file, a fixed time each, and a score.
#pragma once

#include <cstddef>

class ChessBoard;

// Runs the suite in `path` on the engine, `seconds` a position (a negative count means 5);
// prints a block per position and the score. Returns 1, or 0 when the file cannot be opened.
// The engine's own hooks print its console rows while the suite runs.
int runTestSuite(ChessBoard& engine, int seconds, const char* path);

// The parts of one suite line: the position before "bm", the expected moves up to the ";"
// and the id between the quotes that follow. Each part is cut at the end of the line when
// its delimiter is missing.
struct EpdLine {
    char fen[256];
    char expected[256];
    char id[256];
};
// False for a line without "bm". The line is at most 255 characters, as the reader takes it.
bool splitEpdLine(const char* line, EpdLine& out);
