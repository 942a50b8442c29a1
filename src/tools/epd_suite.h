// The best-move test suite: positions from an EPD file, a fixed time each, and a score.
#pragma once

// Runs the suite in `path` with `seconds` a position; returns the exit status.
int runTestSuite(const char* path, int seconds);
