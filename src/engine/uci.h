// The UCI command handler: its command table and the two parsers the table's rows use.
#pragma once

#include "board/chess_board.h"
#include "engine/command_table.h"

CommandTable uciCommands();
// The "go" parameters into the limits of the next search. A mode, clock or increment the
// line leaves out keeps its value; moves to go is 0 unless given.
void parseGo(SearchLimits& limits, const char* line);
// "position startpos|fen ... [moves ...]" onto the engine's board.
void parsePosition(ChessBoard& engine, const char* line);
