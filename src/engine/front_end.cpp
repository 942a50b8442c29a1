// The front end's globals and the interactive engine's life: banner, command loop, shutdown.
#include "engine/front_end.h"

#include "board/trace.h"
#include "engine/command_reader.h"
#include "engine/protocol_common.h"
#include "platform/send_command.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <thread>

ChessBoardUCI* board   = nullptr;
char* commandBuffer    = nullptr;
int quitRequested      = 0;
int protocol           = PROTOCOL_NONE;
int movesPerSession    = 0;
int movesLeftInSession = 0;
int forceMode          = 0;
int debugMode          = 0;
int protocolVersion    = 0;
int dropSearchMove     = 0;
int moveDropped        = 0;

namespace {
// Long enough to cost nothing while waiting, short enough that nobody notices it.
constexpr std::chrono::milliseconds END_OF_INPUT_PAUSE{50};
} // namespace

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

    while (!quitRequested) {
        // Once the input has ended every read fails at once; the engine keeps trying, as an
        // interface may still be attached, but without spinning a processor.
        if (!readCommand())
            std::this_thread::sleep_for(END_OF_INPUT_PAUSE);
    }
    destroyEngine();
    traceClose();
    std::free(commandBuffer);
    commandBuffer = nullptr;
    return 1;
}
