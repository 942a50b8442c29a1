// What the two protocol handlers share: reading words and numbers from a command line, the
// engine's creation from the configuration file, and the perft and divide commands.
#pragma once

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

// Creates the engine object as "uci" and "xboard" do: configuration file, tables, new game,
// book. An engine created earlier is destroyed first.
void createEngine();
// Stops a search that is still marked as running, frees the tables and deletes the engine.
void destroyEngine();
// The input test the engine's search polls; the front end's inputAvailable unless a test
// harness puts its own here before the engine is created.
extern int (*engineInputPoll)();

// "perft N" and "divide N" of both protocols: the console table from the current position.
// Ignored without a blank, or before the engine exists.
void perftCommand(const char* line);
void divideCommand(const char* line);
