// Standard input for the command reader: our own buffer filled with read(2), split into
// lines here, so that the search can ask without blocking whether a whole command waits.
#pragma once

#include <cstddef>

// 1 when a whole line is waiting, or when the input has ended or failed (the reader then
// answers at once); 0 otherwise. Never blocks.
int inputAvailable();

// Copies the next line (without its line feed and without a trailing carriage return) into
// out, which holds size bytes, and answers 1; blocks until a whole line is there. Answers 0
// at the end of input or on a read error. A line that does not fit is dropped whole.
int readInputLine(char* out, std::size_t size);

// Forgets buffered input and the end-of-input mark, for a caller that replaces descriptor 0.
void resetInput();
