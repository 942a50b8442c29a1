// The UCI command handler: its command table and the two parsers the table's rows use.
#pragma once

#include "board/chess_board.h"
#include "engine/command_table.h"

CommandTable uciCommands();
// The "go" parameters into the engine's time-control fields.
void parseGo(ChessBoard& engine, const char* line);
// "position startpos|fen ... [moves ...]" onto the engine's board.
void parsePosition(ChessBoard& engine, const char* line);
