// The command reader: reads a line, chooses the protocol on the first one and hands every
// line to that protocol's handler. While a search runs it decides what a command may do at
// once and what has to wait until the search has returned.
#pragma once

// What a command that arrives during a search may do.
enum class DuringSearch {
    RUN_NOW,       // answers or sets a flag without touching the board
    IGNORE,        // "go": the engine is already thinking
    WAIT,          // changes settings the running search reads: runs after it
    STOP_AND_WAIT, // changes the board: stops the search, runs after its move is sent
    STOP_AND_DROP, // ends the engine's turn: stops the search, whose move is not played
};

// Reads one line and dispatches it. Returns 1 when a line was read, 0 at the end of input
// or on a read error. At the outermost level it also runs the commands that had to wait
// for a search.
int readCommand();

// Dispatches one line as the reader does (the line is modified by some handlers).
void dispatchCommand(char* line);

// Runs the commands kept back during the last search, in the order they arrived.
void runWaitingCommands();

// Forgets commands kept back for a search, for a caller that starts a new session.
void clearWaitingCommands();
