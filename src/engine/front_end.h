// The front end's process-wide state: the one engine object and the protocol's settings.
#pragma once

#include "engine/chess_board_uci.h"

constexpr const char* PELLIX_VERSION = "1.1b";
constexpr int COMMAND_BUFFER_SIZE    = 4096;

enum Protocol : int { PROTOCOL_NONE = 0, PROTOCOL_UCI = 1, PROTOCOL_XBOARD = 2 };

extern ChessBoardUCI* board; // null until "uci" or "xboard" creates it
extern char* commandBuffer;
extern int quitRequested;
extern int protocol;
extern int movesPerSession;
extern int movesLeftInSession;
extern int forceMode;
extern int debugMode;
extern int protocolVersion;
// Set when a command ends the engine's turn during a search: the search's move is not sent,
// and moveDropped tells the command that it is still on the board, to be taken back.
extern int dropSearchMove;
extern int moveDropped;

// The interactive engine: banner, command loop, shutdown. Returns the exit status.
int runInteractive();
