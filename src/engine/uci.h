// The UCI command handler.
#pragma once

#include "engine/command_reader.h"

// Handles one UCI command line; 0 for "quit", 1 for everything else.
int parseUciCommand(char* line);
// The "go" parameters into the engine's time-control fields.
void parseGo(const char* line);
// "position startpos|fen ... [moves ...]" onto the engine's board.
void parsePosition(const char* line);
// What a UCI command may do while the engine is thinking.
DuringSearch uciDuringSearch(const char* line);
