// Reads commands, detects the protocol and dispatches, including the commands that arrive
// while the search runs: those come here through the engine's readCommand hook, deep inside
// the search, so anything that would change what the search stands on is kept back.
#include "engine/command_reader.h"

#include "board/trace.h"
#include "engine/front_end.h"
#include "engine/input.h"
#include "engine/uci.h"
#include "engine/xboard.h"

#include <cstring>
#include <deque>
#include <string>

namespace {

// Commands kept back while a search unwinds. A search that is told to stop unwinds long
// before its next poll, so only a flood of settings during a long search could fill this.
constexpr std::size_t WAITING_LIMIT = 256;
std::deque<std::string> waiting;

bool searchRunning() {
    return board && board->thinking;
}

void runProtocolCommand(char* line) {
    switch (protocol) {
    case PROTOCOL_NONE:
        if (std::strcmp(line, "uci") == 0) {
            protocol = PROTOCOL_UCI;
            parseUciCommand(line);
        } else if (std::strcmp(line, "xboard") == 0) {
            protocol = PROTOCOL_XBOARD;
            parseXboardCommand(line);
        } else {
            trace("unknown protocol ...");
            quitRequested = 1;
        }
        break;
    case PROTOCOL_UCI:
        if (!parseUciCommand(line))
            quitRequested = 1;
        break;
    case PROTOCOL_XBOARD:
        if (!parseXboardCommand(line))
            quitRequested = 1;
        break;
    default:
        break;
    }
}

void keepForLater(const char* line) {
    if (waiting.size() >= WAITING_LIMIT) {
        trace("too many commands during the search");
        return;
    }
    waiting.emplace_back(line);
}

// Once the search has been told to stop, or a command is already waiting, everything else
// waits too: the interface expects its commands to take effect in the order it sent them
// ("stop" then "isready" must see "bestmove" before "readyok").
void dispatchDuringSearch(char* line) {
    if (board->stopSearch || !waiting.empty()) {
        keepForLater(line);
        return;
    }
    const DuringSearch action =
        protocol == PROTOCOL_UCI ? uciDuringSearch(line) : xboardDuringSearch(line);
    switch (action) {
    case DuringSearch::RUN_NOW:
        runProtocolCommand(line);
        break;
    case DuringSearch::IGNORE:
        trace("already thinking");
        break;
    case DuringSearch::STOP_AND_WAIT:
        board->stopSearch = 1;
        keepForLater(line);
        break;
    case DuringSearch::STOP_AND_DROP:
        board->stopSearch = 1;
        dropSearchMove    = 1;
        keepForLater(line);
        break;
    case DuringSearch::WAIT:
        keepForLater(line);
        break;
    }
}

} // namespace

void dispatchCommand(char* line) {
    if (searchRunning() && protocol != PROTOCOL_NONE)
        dispatchDuringSearch(line);
    else
        runProtocolCommand(line);
}

void runWaitingCommands() {
    char line[COMMAND_BUFFER_SIZE];
    while (!waiting.empty() && !quitRequested && !searchRunning()) {
        std::strncpy(line, waiting.front().c_str(), sizeof line - 1);
        line[sizeof line - 1] = 0;
        waiting.pop_front();
        runProtocolCommand(line);
    }
}

void clearWaitingCommands() {
    waiting.clear();
}

int readCommand() {
    trace("parse command");
    const bool outermost = !searchRunning();
    if (!readInputLine(commandBuffer, COMMAND_BUFFER_SIZE)) {
        trace("command error !!!");
        return 0;
    }
    if (commandBuffer[0]) {
        trace("--> '%s'", commandBuffer);
        // A handler may start a search that reads further commands into commandBuffer, so
        // it works on its own copy.
        char line[COMMAND_BUFFER_SIZE];
        std::memcpy(line, commandBuffer, COMMAND_BUFFER_SIZE);
        dispatchCommand(line);
    }
    if (outermost)
        runWaitingCommands();
    trace("parse command : ok");
    return 1;
}
