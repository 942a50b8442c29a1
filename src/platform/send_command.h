// The one output primitive: every protocol line leaves the program through sendCommand.
#pragma once

#include <cinttypes>

// Formats like printf, appends "\n" and writes the line to standard output at once.
int sendCommand(const char* format, ...) __attribute__((format(printf, 1, 2)));
