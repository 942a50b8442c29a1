// Feeds command lines to a running engine through its real standard input: the first byte
// chooses the protocol, the rest is the session, read line by line by the command reader
// (lines that arrive during a search are read by the search itself). Searches are cut
// short by a poll budget, and deep perft requests are dropped, so every input finishes.
// Afterwards the engine must be idle and its board consistent. Every input gets a new front
// end, so nothing carries over from one session to the next.
#include "engine/front_end.h"
#include "engine/protocol_common.h"
#include "platform/input.h"

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <fstream>
#include <sstream>
#include <string>
#include <string_view>
#include <unistd.h>

namespace {

int pollsLeft         = 0;
FrontEnd* frontEndNow = nullptr; // the session's, for the poll below

// The engine's input test, with a budget: once spent, the running search is told to stop.
int budgetedPoll() {
    if (--pollsLeft < 0 && frontEndNow && frontEndNow->board)
        frontEndNow->board->stopSearch = 1;
    return inputAvailable();
}

// The session as it reaches the engine's standard input, less the perft and divide requests
// deeper than three plies.
std::string session(const std::uint8_t* data, std::size_t size) {
    std::string text = data[0] & 1 ? "xboard\n" : "uci\n";
    std::istringstream lines(std::string(reinterpret_cast<const char*>(data + 1), size - 1));
    for (std::string line; std::getline(lines, line);) {
        const bool walk   = line.rfind("perft", 0) == 0 || line.rfind("divide", 0) == 0;
        const char* value = afterFirstBlank(line.c_str());
        if (!walk || !value || readNumber(value) <= 3)
            text += line + "\n";
    }
    return text;
}

void setUpOnce() {
    static char dir[] = "/tmp/pellix-fuzz-XXXXXX";
    if (!mkdtemp(dir) || chdir(dir) != 0)
        std::abort();
    std::atexit([] {
        std::remove("pellix.ini");
        rmdir(dir);
    });
    // A small table: created anew for every input.
    std::ofstream("pellix.ini") << "[Engine]\nHash=2\n";
    const int null = open("/dev/null", O_WRONLY);
    dup2(null, 1);
    close(null);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const bool ready = (setUpOnce(), true);
    (void)ready;
    if (size == 0)
        return 0;
    const std::string text = session(data, size);
    int ends[2];
    if (pipe(ends) != 0)
        std::abort();
    // The whole session fits in the pipe (inputs are limited to a few kilobytes).
    fcntl(ends[1], F_SETPIPE_SZ, 1 << 20);
    if (write(ends[1], text.data(), text.size()) != ssize_t(text.size()))
        std::abort();
    close(ends[1]);
    dup2(ends[0], 0);
    close(ends[0]);
    resetInput();

    FrontEnd frontEnd(CommandSource{budgetedPoll, readInputLine});
    frontEndNow = &frontEnd;
    pollsLeft   = 64;
    while (!frontEnd.quitRequested && frontEnd.readCommand()) {
        // A new game puts the poll interval back at its default; a short one keeps a fuzz
        // run quick.
        if (frontEnd.board)
            frontEnd.board->pollInterval = 1000;
    }
    // The FEN reader takes positions without a king, and a side without one has no king
    // square to agree with: one report for each missing king is allowed, any more is a fault.
    if (const ChessBoardUCI* b = frontEnd.board.get()) {
        const std::size_t kingless = !b->bbPiece[WHITE][KING] + !b->bbPiece[BLACK][KING];
        if (b->thinking || b->checkConsistency().size() > kingless)
            std::abort();
    }
    frontEndNow = nullptr;
    return 0;
}
