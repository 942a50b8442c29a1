// The XBoard (Chess Engine Communication Protocol) command handler.
#pragma once

#include "engine/command_reader.h"

// Handles one XBoard command line; 0 for "quit", 1 for everything else.
int parseXboardCommand(char* line);
// "level MPS BASE INC": moves per session, base time in minutes or minutes:seconds, and
// increment in whole seconds.
void parseLevel(const char* line);
// What an XBoard command may do while the engine is thinking.
DuringSearch xboardDuringSearch(const char* line);
