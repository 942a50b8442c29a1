// Process entry: a command-line test mode on an engine of its own, or the interactive engine.
#include "engine/front_end.h"
#include "tools/console_modes.h"
#include "tools/epd_suite.h"

#include <cstdlib>
#include <cstring>

namespace {

// The modes' engine reads no input: nothing interrupts a perft or a suite.
int runMode(int (*mode)(ChessBoard&, int, const char*), int number, const char* text) {
    FrontEnd tools(CommandSource{nullptr, nullptr});
    tools.createEngine();
    return mode(*tools.board, number, text);
}

} // namespace

int main(int argc, char** argv) {
    if (argc >= 2) {
        const char* mode = argv[1];
        if (std::strcmp(mode, "-testsuite") == 0 && argc >= 3)
            return runMode(runTestSuite, argc >= 4 ? std::atoi(argv[3]) : 5, argv[2]);
        const bool withFen = argc == 5 && std::strcmp(argv[3], "-fen") == 0;
        if (std::strcmp(mode, "-perft") == 0 && (argc == 3 || withFen))
            return runMode(runPerftMode, std::atoi(argv[2]), withFen ? argv[4] : nullptr);
        if (std::strcmp(mode, "-divide") == 0 && (argc == 3 || withFen))
            return runMode(runDivideMode, std::atoi(argv[2]), withFen ? argv[4] : nullptr);
    }
    FrontEnd frontEnd;
    return frontEnd.run();
}
