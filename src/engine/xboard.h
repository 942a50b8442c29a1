// The XBoard (Chess Engine Communication Protocol) command handler: its command table and the
// "level" parser.
#pragma once

#include "engine/command_table.h"

CommandTable xboardCommands();
// "level MPS BASE INC": moves per session, base time in minutes or minutes:seconds, and
// increment in whole seconds.
void parseLevel(FrontEnd& frontEnd, const char* line);
