// The command reader: the interactive engine's loop, the protocol chosen by the first line,
// and the dispatch of every further line through the protocol's table, including the
// commands that arrive while the search runs. Those come here through the engine's
// readCommand hook, deep inside the search, so anything that would change what the search
// stands on is kept back until it has returned.
#include "board/trace.h"
#include "board/version.h"
#include "engine/front_end.h"
#include "engine/uci.h"
#include "engine/xboard.h"
#include "platform/send_command.h"

#include <chrono>
#include <cstdio>
#include <cstring>
#include <new>
#include <thread>

namespace {

// Long enough to cost nothing while waiting, short enough that nobody notices it.
constexpr std::chrono::milliseconds END_OF_INPUT_PAUSE{50};

// Commands kept back while a search unwinds. A search that is told to stop unwinds long
// before its next poll, so only a flood of settings during a long search could fill this.
constexpr std::size_t WAITING_LIMIT = 256;

} // namespace

CommandTable commandsOf(int protocol) {
    switch (protocol) {
    case PROTOCOL_UCI:
        return uciCommands();
    case PROTOCOL_XBOARD:
        return xboardCommands();
    default:
        return {};
    }
}

int FrontEnd::run() {
    commandBuffer.reset(new (std::nothrow) char[COMMAND_BUFFER_SIZE]());
    if (!commandBuffer) {
        std::fputs("out of memory\n", stderr);
        return 0;
    }
    std::setvbuf(stdout, nullptr, _IONBF, 0);
    protocol = PROTOCOL_NONE;
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
    commandBuffer.reset();
    return 1;
}

int FrontEnd::readCommand() {
    trace("parse command");
    const bool outermost = !searchRunning();
    if (!commandBuffer)
        commandBuffer.reset(new char[COMMAND_BUFFER_SIZE]());
    if (!source.readLine || !source.readLine(commandBuffer.get(), COMMAND_BUFFER_SIZE)) {
        trace("command error !!!");
        return 0;
    }
    if (commandBuffer[0]) {
        trace("--> '%s'", commandBuffer.get());
        // A handler may start a search that reads further commands into commandBuffer, so
        // it works on its own copy.
        char line[COMMAND_BUFFER_SIZE];
        std::memcpy(line, commandBuffer.get(), COMMAND_BUFFER_SIZE);
        dispatch(line);
    }
    if (outermost)
        runWaitingCommands();
    trace("parse command : ok");
    return 1;
}

void FrontEnd::dispatch(const char* line) {
    if (searchRunning() && protocol != PROTOCOL_NONE)
        dispatchDuringSearch(line);
    else
        runProtocolCommand(line);
}

void FrontEnd::runProtocolCommand(const char* line) {
    if (protocol == PROTOCOL_NONE) {
        if (std::strcmp(line, "uci") == 0) {
            protocol = PROTOCOL_UCI;
        } else if (std::strcmp(line, "xboard") == 0) {
            protocol = PROTOCOL_XBOARD;
        } else {
            trace("unknown protocol ...");
            quitRequested = 1;
            return;
        }
    }
    const CommandTable table = commandsOf(protocol);
    runCommand(*this, findCommand(table, line), line);
}

void FrontEnd::keepForLater(const char* line) {
    if (waiting.size() >= WAITING_LIMIT) {
        trace("too many commands during the search");
        return;
    }
    waiting.emplace_back(line);
}

void FrontEnd::dispatchDuringSearch(const char* line) {
    if (board->stopSearch || !waiting.empty()) {
        keepForLater(line);
        return;
    }
    const CommandRow& row = findCommand(commandsOf(protocol), line);
    switch (row.duringSearch) {
    case DuringSearch::ANSWER:
        runCommand(*this, row, line);
        break;
    case DuringSearch::IGNORE:
        trace("already thinking");
        break;
    case DuringSearch::STOP_SILENT:
        dropSearchMove = 1;
        [[fallthrough]];
    case DuringSearch::STOP:
        board->stopSearch = 1;
        keepForLater(line);
        break;
    case DuringSearch::QUEUE:
        keepForLater(line);
        break;
    }
}

void FrontEnd::runWaitingCommands() {
    char line[COMMAND_BUFFER_SIZE];
    while (!waiting.empty() && !quitRequested && !searchRunning()) {
        std::snprintf(line, sizeof line, "%s", waiting.front().c_str());
        waiting.pop_front();
        runProtocolCommand(line);
    }
}
