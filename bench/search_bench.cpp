// pellix-bench search: a fixed-depth search over a fixed set of positions, each from a
// cleared table, printing every position's nodes, the total (the signature: it changes only
// when search behaviour changes) and the speed. When the classical engines glaurung and
// toga2 are installed, their speed on some of the same positions is measured in the same
// run, so that the ratio means something on a shared machine.
#include "bench.h"
#include "board/make_engine.h"
#include "board/silent_board.h"
#include "search/transposition_table.h"

#include <cinttypes>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>

namespace {

// clang-format off
constexpr const char* positions[] = {
    // Openings and early middlegames.
    START_FEN,
    "r1bqkbnr/pppp1ppp/2n5/4p3/4P3/5N2/PPPP1PPP/RNBQKB1R w KQkq - 2 3",
    "rnbqkb1r/pp2pppp/3p1n2/8/3NP3/8/PPP2PPP/RNBQKB1R w KQkq - 1 5",
    "r1bq1rk1/pp2bppp/2n1pn2/3p4/2PP4/2N1PN2/PP3PPP/R2QKB1R w KQ - 0 8",
    "rnbq1rk1/ppp1bppp/4pn2/3p4/2PP4/5NP1/PP2PPBP/RNBQ1RK1 b - - 4 6",
    "r1bqk2r/pppp1ppp/2n2n2/2b1p3/2B1P3/3P1N2/PPP2PPP/RNBQK2R w KQkq - 1 5",
    "rnbqkb1r/1p2pppp/p2p1n2/8/3NP3/2N5/PPP2PPP/R1BQKB1R w KQkq - 0 6",
    "r3k2r/p1ppqpb1/bn2pnp1/3PN3/1p2P3/2N2Q1p/PPPBBPPP/R3K2R w KQkq - 0 1",
    // Middlegames, quiet and tactical.
    "r4rk1/1pp1qppp/p1np1n2/2b1p1B1/2B1P1b1/P1NP1N2/1PP1QPPP/R4RK1 w - - 0 10",
    "r1bq1rk1/ppp2ppp/2np1n2/2b1p3/2B1P3/2PP1N2/PP3PPP/RNBQR1K1 w - - 0 7",
    "2rr3k/pp3pp1/1nnqbN1p/3pN3/2pP4/2P3Q1/PPB4P/R4RK1 w - - 0 1",
    "r1b2rk1/ppbn1ppp/4p3/1QP4q/3P4/N4N2/5PPP/R1B2RK1 w - - 0 1",
    "r2qkb1r/1ppb1ppp/p7/4p3/P1Q1P3/2P5/5PPP/R1B2KNR b kq - 0 1",
    "3q1rk1/p4pp1/2pb3p/3p4/6Pr/1PNQ4/P1PB1PP1/4RRK1 b - - 0 1",
    "r1bqr1k1/pp1n1ppp/2pb1n2/3p4/3P4/2NBPN2/PPQ2PPP/R3K2R w KQ - 4 10",
    "r2q1rk1/pb1nbppp/1p2pn2/2pp4/2PP4/1PN1PN2/PB2BPPP/R2Q1RK1 w - - 2 10",
    "2kr3r/pp1q1ppp/2n1bn2/2bpp3/4P3/2NP1N2/PPPQBPPP/R3K2R w KQ - 0 10",
    "r1b1k2r/ppppnppp/2n2q2/2b5/3NP3/2P1B3/PP3PPP/RN1QKB1R w KQkq - 0 7",
    "4rrk1/pp1n3p/3q2pQ/2p1pb2/2PP4/2P3N1/P2B2PP/4RRK1 b - - 7 19",
    "r3r1k1/2p2ppp/p1p1bn2/8/1q2P3/2NPQN2/PPP3PP/R4RK1 b - - 2 15",
    // Endgames.
    "8/2p5/3p4/KP5r/1R3p1k/8/4P1P1/8 w - - 0 1",
    "8/8/8/4k3/8/8/4PK2/8 w - - 0 1",
    "8/5pk1/6p1/8/8/6P1/5PK1/8 w - - 0 1",
    "1k6/1P6/2K5/8/8/8/8/8 w - - 0 1",
    "8/8/1p6/p1p5/P1P5/1P4k1/6p1/6K1 w - - 0 1",
    "4k3/8/8/8/8/8/4P3/R3K3 w Q - 0 1",
    "1K1k4/1P6/8/8/8/8/r7/2R5 w - - 0 1",
    "8/3k4/8/3KP3/8/8/8/8 w - - 0 1",
    "6k1/5p2/6p1/8/7p/8/6PP/6K1 b - - 0 1",
    "8/8/3k4/8/2BN4/8/8/4K3 w - - 0 1",
};
// clang-format on

constexpr int DEFAULT_DEPTH = 10;

// Reference positions for the classical engines: quiet ones, where no engine finds a mate
// and stops early.
constexpr int referencePositions[] = {0, 3, 8, 15, 20};

// The speed of a classical engine on one thread: "go movetime" on the reference positions,
// the nodes and times of each search's last report added up; a negative number when the
// engine is not installed.
double referenceNps(const char* engine, int milliseconds) {
    char probe[128];
    std::snprintf(probe, sizeof probe, "command -v %s >/dev/null 2>&1 || test -x /usr/games/%s",
                  engine, engine);
    if (std::system(probe) != 0)
        return -1;
    double nodes = 0, seconds = 0;
    for (int i : referencePositions) {
        char command[1024];
        std::snprintf(command, sizeof command,
                      "(printf 'uci\\nsetoption name Threads value 1\\n"
                      "setoption name Number of Threads value 1\\nisready\\n"
                      "position fen %s\\ngo movetime %d\\n'; sleep %.1f; echo quit) | "
                      "PATH=$PATH:/usr/games %s 2>/dev/null",
                      positions[i], milliseconds, milliseconds / 1000.0 + 0.5, engine);
        std::FILE* pipe = popen(command, "r");
        if (!pipe)
            continue;
        char line[1024];
        double lastNodes = 0, lastTime = 0;
        while (std::fgets(line, sizeof line, pipe)) {
            const char* n = std::strstr(line, " nodes ");
            const char* t = std::strstr(line, " time ");
            if (n && t && std::strstr(line, " nps ")) {
                lastNodes = std::atof(n + 7);
                lastTime  = std::atof(t + 6) / 1000.0;
            }
        }
        pclose(pipe);
        nodes += lastNodes;
        seconds += lastTime;
    }
    return seconds > 0 ? nodes / seconds : -1;
}

} // namespace

// Arguments: [depth, 0 for the default] [milliseconds per position for the reference
// engines, 0 to skip them]
int benchSearch(int argc, char** argv) {
    const int given         = argc >= 1 ? std::atoi(argv[0]) : 0;
    const int depth         = given > 0 ? given : DEFAULT_DEPTH;
    const int referenceTime = argc >= 2 ? std::atoi(argv[1]) : 2000;
    auto board              = makeEngine<SilentBoard>(16);
    std::uint64_t total     = 0;
    double seconds          = 0;
    int index               = 0;
    for (const char* fen : positions) {
        board->setPosition(fen);
        board->hashTable->clear();
        board->limits.setTimeMode(TIME_DEPTH, depth);
        const double start = benchSeconds();
        board->think();
        const double elapsed = benchSeconds() - start;
        char move[16];
        ChessBoard::moveToLongText(board->lastMove, move);
        std::printf("%2d  %-10s %12" PRIu64 " nodes  %7.3f s\n", ++index, move, board->nodeCount,
                    elapsed);
        total += board->nodeCount;
        seconds += elapsed;
    }
    const double nps = double(total) / seconds;
    std::printf("depth %d, %d positions, %.2f s, %.0f nps\n", depth, index, seconds, nps);
    if (referenceTime > 0)
        for (const char* engine : {"glaurung", "toga2"}) {
            const double reference = referenceNps(engine, referenceTime);
            if (reference > 0)
                std::printf("%-8s %.0f nps  pellix/%s speed ratio %.2f\n", engine, reference,
                            engine, nps / reference);
        }
    // The signature comes last, where scripts look for it.
    std::printf("Nodes: %" PRIu64 "\n", total);
    return 0;
}
