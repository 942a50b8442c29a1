// The statistics walk as the engine first did it, kept as the reference for the counting
// one: every leaf move is made, and every checking leaf has its replies generated and tried.
#pragma once

#include "board/chess_board.h"

#include <string>

// The seven counters of the moves `depth` plies below the position on the board.
PerftCounters oracleStats(ChessBoard& board, int depth);

// The engine's perftStats of the same depth.
PerftCounters engineStats(ChessBoard& board, int depth);

// "nodes N captures N ..." for test messages; equal texts mean equal counters.
std::string countersText(const PerftCounters& c);

// Both walks from `fen` at every depth up to maxDepth; a test failure names the first
// depth whose counters differ.
void expectStatsMatchOracle(ChessBoard& board, const std::string& fen, int maxDepth);
