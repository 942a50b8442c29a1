// A protocol's commands as one table: how a line matches each row, what the row does, and
// what it does when it arrives while a search runs. The command reader consults the same
// row for both, so the two can never disagree.
#pragma once

#include <span>

class FrontEnd;

// How a row's text matches a line.
enum class Match {
    EXACT,  // the whole line
    PREFIX, // the line begins with the text; a text ending in a blank needs the blank
    VALUE,  // the text, which ends in a blank, and a value after it; a line with nothing
            // after the blank matches the row and does nothing
    MOVE,   // the line begins like a move: file, rank, file, rank
    ANY,    // every line: the last row of a table
};

// What a command does when it arrives while the engine thinks. Once the search has been
// told to stop, or a command is already waiting, every command waits, so that commands take
// effect in the order they were sent.
enum class DuringSearch {
    ANSWER,      // runs at once: it answers, or sets a flag the search reads; the board stays
    QUEUE,       // changes what the running search reads: waits until the search has ended
    STOP,        // changes the board: stops the search, runs after the search's move is sent
    STOP_SILENT, // ends the engine's turn: stops the search, whose move is not sent
    IGNORE,      // the engine is already thinking
};

struct CommandRow {
    const char* text;
    Match match;
    void (*handler)(FrontEnd& frontEnd, const char* line);
    DuringSearch duringSearch;
};

using CommandTable = std::span<const CommandRow>;

// The first row of the table that matches the line; every table ends with an ANY row.
const CommandRow& findCommand(CommandTable table, const char* line);
// Runs the row's command on the line, unless the row takes a value and the line has none.
void runCommand(FrontEnd& frontEnd, const CommandRow& row, const char* line);
