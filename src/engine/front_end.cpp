// The front end's globals and the interactive engine's life from banner to shutdown.
#include "engine/front_end.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "engine/send_command.h"
#include "engine/trace.h"

ChessBoardUCI* board    = nullptr;
char* commandBuffer     = nullptr;
int quitRequested       = 0;
int protocol            = PROTOCOL_NONE;
int movesPerSession     = 0;
int movesLeftInSession  = 0;
int forceMode           = 0;
int debugMode           = 0;
int protocolVersion     = 0;

int runInteractive() {
    commandBuffer = static_cast<char*>(std::malloc(COMMAND_BUFFER_SIZE));
    if (!commandBuffer) {
        std::fputs("out of memory\n", stderr);
        return 0;
    }
    std::setvbuf(stdout, nullptr, _IONBF, 0);
    protocol = PROTOCOL_NONE;
    std::memset(commandBuffer, 0, COMMAND_BUFFER_SIZE);
    traceOpen("logfile.html");
    sendCommand("Pellix %s by Anselm KORVEL", PELLIX_VERSION);

    // The command reader arrives with the protocols; until then the engine only greets.
    quitRequested = 1;

    if (board) {
        if (board->thinking) {
            trace("stop thinking");
            board->stopSearch = 1;
        }
        trace("free");
        board->releaseTables();
        trace("delete board");
        delete board;
        board = nullptr;
    }
    traceClose();
    std::free(commandBuffer);
    commandBuffer = nullptr;
    return 1;
}
