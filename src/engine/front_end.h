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

// The interactive engine: banner, command loop, shutdown. Returns the exit status.
int runInteractive();
