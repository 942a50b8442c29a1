// The console forms of perft and divide, shared by the command line and both protocols.
#pragma once

class ChessBoard;

// The header line, then one row of seven counters for each depth from 1 to maxDepth.
void printPerftTable(ChessBoard& board, int maxDepth);
// One "move : count" line per legal root move, counting leaves depth + 1 plies down.
void printDivideListing(ChessBoard& board, int depth);
