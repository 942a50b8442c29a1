// pellix-bench: speed and signature benchmarks, one subcommand each.
#include "bench.h"

#include <chrono>
#include <cstdio>
#include <cstring>

double benchSeconds() {
    using namespace std::chrono;
    return duration<double>(steady_clock::now().time_since_epoch()).count();
}

namespace {

struct Subcommand {
    const char* name;
    int (*run)(int, char**);
    const char* help;
};

constexpr Subcommand subcommands[] = {
    {"perft", benchPerft,
     "perft speed, node walk and counter table: 6 plies from the start, 5 of Kiwipete"},
    {"eval", benchEval, "evaluation and SEE speed; with FENs, each position's terms"},
    {"search", benchSearch, "fixed-depth search over a set of positions: nodes and speed"},
    {"random-games", benchRandomGames,
     "N games of 20 random legal plies, as PGN for the book builder's benchmark"},
};

} // namespace

int main(int argc, char** argv) {
    if (argc >= 2)
        for (const Subcommand& s : subcommands)
            if (std::strcmp(argv[1], s.name) == 0)
                return s.run(argc - 2, argv + 2);
    std::printf("usage: pellix-bench COMMAND [ARGS]\n");
    for (const Subcommand& s : subcommands)
        std::printf("  %-8s %s\n", s.name, s.help);
    return 2;
}
