// The console forms of the perft walks and the one-shot modes started from the command line
// instead of the interactive engine. The protocols' "perft" and "divide" commands print the
// same tables as the command line.
#pragma once

class ChessBoard;

// The header line, then one row of seven counters for each depth from 1 to maxDepth.
void printPerftTable(ChessBoard& board, int maxDepth);
// One "move : count" line per legal root move, counting leaves depth + 1 plies down.
void printDivideListing(ChessBoard& board, int depth);

// The command-line modes work on the engine they are given, set up the way a protocol sets
// it up. Each returns the exit status: 1 after a run, 0 when the FEN was rejected. fen may be
// null: the position on the board (the initial one).
int runPerftMode(ChessBoard& engine, int depth, const char* fen);
int runDivideMode(ChessBoard& engine, int depth, const char* fen);
