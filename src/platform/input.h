// Standard input for the command reader: a non-blocking test for a waiting command, and the
// line reader. Both work on the engine's own buffer (platform/line_buffer.h), so the test
// also sees what was read but not yet handed out. One implementation file per system.
#pragma once

#include <cstddef>

// 1 when a command line is waiting, or when the input has ended or failed (the reader then
// answers at once); 0 otherwise. Never blocks.
int inputAvailable();

// Copies the next line (without its line feed and without a trailing carriage return) into
// out, which holds size bytes, and answers 1; blocks until a whole line is there. Answers 0
// at the end of input or on a read error. A line that does not fit is dropped whole.
int readInputLine(char* out, std::size_t size);

// Forgets buffered input and the end-of-input mark, for a caller that replaces the
// standard input under the engine.
void resetInput();
