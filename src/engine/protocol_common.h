// What the two protocol handlers share: reading words and numbers from a command line, and
// the commands both tables hold.
#pragma once

class FrontEnd;

#include <cstddef>
#include <cstdint>

// True when line begins with prefix.
bool startsWith(const char* line, const char* prefix);
// The text after the first blank of line, or null when there is none.
const char* afterFirstBlank(const char* line);
// The decimal number at the start of text, as atoi reads it but clamped to the int range
// instead of overflowing; 0 when there are no digits.
int readNumber(const char* text);
// Scanf-like readers that advance text: a number as "%d" reads it (blanks skipped, false
// when no digit follows) and a word as "%s" does (at most size - 1 characters kept).
bool scanNumber(const char*& text, int& value);
bool scanWord(const char*& text, char* out, std::size_t size);
// A clock or time value from the interface, in the engine's unit: never negative (an
// interface may report a clock that has run out as negative), at most the field's range.
float clockMilliseconds(std::int64_t milliseconds);
std::uint32_t budgetMicroseconds(std::int64_t microseconds);

// "quit" of both protocols: a search that is still running is told to stop, and the front
// end leaves its command loop once the search has unwound.
void quitCommand(FrontEnd& frontEnd, const char* line);
// "perft N" and "divide N" of both protocols: the console table from the current position.
// Ignored without a blank, or before the engine exists.
void perftCommand(FrontEnd& frontEnd, const char* line);
void divideCommand(FrontEnd& frontEnd, const char* line);
// For the rows that are accepted and do nothing.
void ignoreCommand(FrontEnd& frontEnd, const char* line);
