// Process entry: a command-line test mode, or the interactive engine.
#include "engine/front_end.h"
#include "tools/epd_suite.h"
#include "tools/test_modes.h"

#include <cstdlib>
#include <cstring>

int main(int argc, char** argv) {
    if (argc >= 2) {
        const char* mode = argv[1];
        if (std::strcmp(mode, "-testsuite") == 0 && argc >= 3)
            return runTestSuite(argv[2], argc >= 4 ? std::atoi(argv[3]) : 5);
        const bool withFen = argc == 5 && std::strcmp(argv[3], "-fen") == 0;
        if (std::strcmp(mode, "-perft") == 0 && (argc == 3 || withFen))
            return runPerftMode(std::atoi(argv[2]), withFen ? argv[4] : nullptr);
        if (std::strcmp(mode, "-divide") == 0 && (argc == 3 || withFen))
            return runDivideMode(std::atoi(argv[2]), withFen ? argv[4] : nullptr);
    }
    return runInteractive();
}
