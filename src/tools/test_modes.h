// The one-shot modes started from the command line instead of the interactive engine.
#pragma once

// Each returns the exit status: 1 after a run, 0 when the FEN was rejected.
int runPerftMode(int depth, const char* fen); // fen may be null: the initial position
int runDivideMode(int depth, const char* fen);
