// The one-shot modes started from the command line instead of the interactive engine. Each
// works on the engine it is given, set up the way a protocol sets it up.
#pragma once

class ChessBoard;

// Each returns the exit status: 1 after a run, 0 when the FEN was rejected. fen may be null:
// the position on the board (the initial one).
int runPerftMode(ChessBoard& engine, int depth, const char* fen);
int runDivideMode(ChessBoard& engine, int depth, const char* fen);
