// The reference for the engine's counting statistics walk: a walk that makes every leaf move
// and generates and tries the replies of every checking leaf.
#pragma once

#include "board/chess_board.h"

#include <string>

// Both walks from `fen` at every depth up to maxDepth; a test failure names the first
// depth whose counters differ.
void expectStatsMatchOracle(ChessBoard& board, const std::string& fen, int maxDepth);
