// Perft speed: the plain node walk and the seven-counter table that "pellix -perft" prints,
// from two positions, each against Debian's stockfish "go perft" when it is installed. The
// three are run in turn, three rounds, and the medians compared, so that the load of a
// shared machine falls on all of them alike.
#include "bench.h"
#include "board/make_engine.h"
#include "board/silent_board.h"

#include <algorithm>
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
constexpr int ROUNDS = 3;

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

// The table's rows as the perft mode computes them, depth by depth; the last row's nodes.
std::uint64_t counterTable(ChessBoard& board, int depth) {
    for (int d = 1; d <= depth; ++d) {
        board.perftCounters = {};
        board.perftStats(d, 0);
    }
    return board.perftCounters.nodes;
}

double median(double* times) {
    std::sort(times, times + ROUNDS);
    return times[ROUNDS / 2];
}

void report(const PerftCase& c, const char* walk, std::uint64_t nodes, double seconds,
            double reference) {
    std::printf("%-9s %-6s depth %d  nodes %12" PRIu64 "  %7.3f s  %7.2f Mnps%s", c.name, walk,
                c.depth, nodes, seconds, nodes / seconds / 1e6,
                nodes == c.expected ? "" : "  WRONG COUNT");
    if (reference > 0)
        std::printf("  pellix/stockfish time ratio %.2f", seconds / reference);
    std::printf("\n");
}

} // namespace

int benchPerft(int, char**) {
    auto board = makeEngine<SilentBoard>(0);
    int status = 0;
    for (const PerftCase& c : cases) {
        board->setPosition(c.fen);
        double walk[ROUNDS], table[ROUNDS], reference[ROUNDS];
        std::uint64_t walkNodes = 0, tableNodes = 0;
        for (int round = 0; round < ROUNDS; ++round) {
            double start     = benchSeconds();
            walkNodes        = board->perft(c.depth, 0);
            walk[round]      = benchSeconds() - start;
            start            = benchSeconds();
            tableNodes       = counterTable(*board, c.depth);
            table[round]     = benchSeconds() - start;
            reference[round] = stockfishSeconds(c.fen, c.depth);
        }
        const double stockfish = median(reference);
        if (stockfish > 0)
            std::printf("%-9s stockfish go perft %d: %7.3f s\n", c.name, c.depth, stockfish);
        report(c, "nodes", walkNodes, median(walk), stockfish);
        report(c, "table", tableNodes, median(table), stockfish);
        if (walkNodes != c.expected || tableNodes != c.expected)
            status = 1;
    }
    return status;
}
