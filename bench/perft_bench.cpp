// Perft speed: the plain perft walk from two positions, and, when Debian's stockfish is
// installed, its own "go perft" timed in the same run so the ratio means something on a
// shared machine.
#include "bench.h"
#include "board/make_engine.h"
#include "tools/silent_board.h"

#include <cinttypes>
#include <cstdio>
#include <cstring>
#include <memory>

namespace {

struct PerftCase {
    const char* name;
    const char* fen;
    int depth;
    std::uint64_t expected;
};

constexpr PerftCase cases[] = {
    {"start", START_FEN, 6, 119060324},
    {"kiwipete", "r3k2r/p1ppqpb1/bn2pnp1/3PN3/1p2P3/2N2Q1p/PPPBBPPP/R3K2R w KQkq - 0 1", 5,
     193690690},
};

// Wall time of "go perft N" in stockfish (Debian installs it in /usr/games), or a negative
// number when it cannot be run. Its start-up is part of the time, which favours Pellix a little.
double stockfishSeconds(const char* fen, int depth) {
    char command[512];
    std::snprintf(command, sizeof command,
                  "PATH=\"$PATH:/usr/games\"; command -v stockfish >/dev/null 2>&1 && "
                  "printf 'position fen %s\\ngo perft %d\\nquit\\n' | stockfish 2>/dev/null",
                  fen, depth);
    const double start = benchSeconds();
    std::FILE* pipe    = popen(command, "r");
    if (!pipe)
        return -1;
    char line[256];
    bool counted = false;
    while (std::fgets(line, sizeof line, pipe))
        if (std::strncmp(line, "Nodes searched", 14) == 0)
            counted = true;
    const double elapsed = benchSeconds() - start;
    pclose(pipe);
    return counted ? elapsed : -1;
}

} // namespace

int benchPerft(int, char**) {
    auto board = makeEngine<SilentBoard>(0);
    int status = 0;
    for (const PerftCase& c : cases) {
        board->setPosition(c.fen);
        const double start        = benchSeconds();
        const std::uint64_t nodes = board->perft(c.depth, 0);
        const double seconds      = benchSeconds() - start;
        std::printf("%-9s depth %d  nodes %12" PRIu64 "  %7.3f s  %7.2f Mnps%s\n", c.name, c.depth,
                    nodes, seconds, nodes / seconds / 1e6,
                    nodes == c.expected ? "" : "  WRONG COUNT");
        if (nodes != c.expected)
            status = 1;
        const double reference = stockfishSeconds(c.fen, c.depth);
        if (reference > 0)
            std::printf("%-9s stockfish go perft %d: %7.3f s  pellix/stockfish time ratio %.2f\n",
                        c.name, c.depth, reference, seconds / reference);
    }
    return status;
}
