// pellix-bench eval: evaluation and exchange-evaluation speed over a fixed set of positions,
// timed against move generation on the same positions; or, given FENs, the term-by-term
// breakdown of each position's evaluation.
#include "bench.h"
#include "board/make_engine.h"
#include "board/silent_board.h"

#include <cstdint>
#include <cstdio>
#include <memory>

namespace {

// Openings, middlegames with tactics on the board, and endgames of each stage.
constexpr const char* POSITIONS[] = {
    START_FEN,
    "r1bqkbnr/pppp1ppp/2n5/4p3/4P3/5N2/PPPP1PPP/RNBQKB1R w KQkq - 2 3",
    "rnbqkb1r/pp2pppp/3p1n2/8/3NP3/8/PPP2PPP/RNBQKB1R w KQkq - 1 5",
    "r1bqk2r/pppp1ppp/2n2n2/2b1p3/2B1P3/3P1N2/PPP2PPP/RNBQK2R w KQkq - 1 5",
    "rnbqkb1r/ppp2ppp/4pn2/3p2B1/2PP4/2N5/PP2PPPP/R2QKBNR b KQkq - 3 4",
    "r3k2r/p1ppqpb1/bn2pnp1/3PN3/1p2P3/2N2Q1p/PPPBBPPP/R3K2R w KQkq - 0 1",
    "2rr3k/pp3pp1/1nnqbN1p/3pN3/2pP4/2P3Q1/PPB4P/R4RK1 w - - 0 1",
    "r1bq2rk/pp3pbp/2p1p1pQ/7P/3P4/2PB1N2/PP3PPR/2KR4 w - - 0 1",
    "5rk1/1ppb3p/p1pb4/6q1/3P1p1r/2P1R2P/PP1BQ1P1/5RKN w - - 0 1",
    "r2q1rk1/pp2bppp/2n1pn2/3p4/3P1B2/2PBPN2/PP1N1PPP/R2QK2R w KQ - 0 9",
    "r1b2rk1/2q1bppp/p2ppn2/1p6/3BPP2/2NB4/PPP3PP/R2Q1R1K w - - 0 13",
    "2r2rk1/1bqnbppp/pp1ppn2/8/2PNP3/1PN1BP2/P2QB1PP/2RR2K1 w - - 0 15",
    "r4rk1/1pp1qppp/p1np1n2/2b1p1B1/2B1P1b1/P1NP1N2/1PP1QPPP/R4RK1 w - - 0 10",
    "3r1rk1/p4ppp/1qp1b3/4P3/1p1n4/3B2Q1/PP1N1PPP/R4RK1 b - - 0 18",
    "2kr3r/pp1q1ppp/2n1bn2/2b1p3/4P3/2NP1N2/PPPQBPPP/R1B2RK1 w - - 0 10",
    "6k1/5ppp/8/8/8/8/5PPP/3R2K1 w - - 0 1",
    "8/2p5/3p4/KP5r/1R3p1k/8/4P1P1/8 w - - 0 1",
    "8/8/4kpp1/3p1b2/p6P/2B5/6P1/6K1 b - - 0 47",
    "8/5pk1/6p1/2R5/5P2/6K1/r5P1/8 w - - 0 40",
    "4k3/8/8/3PP3/8/8/8/4K3 w - - 0 1",
    "8/8/1p1k4/1P6/3K4/8/8/8 w - - 0 1",
    "2q3k1/5pp1/7p/8/8/7P/5PP1/2Q3K1 w - - 0 30",
    "r4rk1/pp3ppp/8/3Q4/8/8/PPq2PPP/R4RK1 w - - 0 20",
    "1k6/8/8/8/3n4/8/3B4/3K4 b - - 0 1",
};

// Each position's legal moves lead to the positions actually timed, so the set has some
// variety without parsing FENs inside the timed loops.
constexpr int EVAL_REPEATS = 4000;
constexpr int SEE_REPEATS  = 8000;

struct Rates {
    std::uint64_t calls = 0;
    double seconds      = 0;
    long checksum       = 0; // keeps the work from being optimised away
};

// Runs `work` on every child of every position, `repeats` times per child, after an untimed
// `prepare`.
template <typename Prepare, typename Work>
Rates overChildren(SilentBoard& board, int repeats, Prepare prepare, Work work) {
    Rates rates;
    for (const char* fen : POSITIONS) {
        board.setPosition(fen);
        MoveEntry list[MAX_GENERATED];
        const int count = board.generateMoves(list, board.sideToMoveInCheck());
        for (int i = 0; i < count; ++i) {
            const Move m = list[i].move;
            if (board.makeMove(m)) {
                prepare();
                const double start = benchSeconds();
                for (int r = 0; r < repeats; ++r)
                    rates.calls += work(rates.checksum);
                rates.seconds += benchSeconds() - start;
            }
            board.unmakeMove(m);
        }
    }
    return rates;
}

void printRate(const char* what, const Rates& r) {
    std::printf("%-14s %10llu calls  %7.3f s  %8.3f M/s  (checksum %ld)\n", what,
                static_cast<unsigned long long>(r.calls), r.seconds, r.calls / r.seconds / 1e6,
                r.checksum);
}

int speedBenchmark() {
    auto board         = makeEngine<SilentBoard>(0);
    MoveEntry* scratch = board->moveStack;
    int captures       = 0;
    auto nothing       = [] {};

    const Rates eval = overChildren(*board, EVAL_REPEATS, nothing, [&](long& sum) {
        sum += board->evaluate(-INFINITE_SCORE, INFINITE_SCORE, 0);
        return 1;
    });
    const Rates see  = overChildren(
         *board, SEE_REPEATS, [&] { captures = board->generateCaptures(scratch); },
         [&](long& sum) {
            for (int i = 0; i < captures; ++i)
                sum += board->see(scratch[i].move);
            return captures;
        });
    const Rates generate = overChildren(*board, EVAL_REPEATS, nothing, [&](long& sum) {
        sum += board->generateMoves(scratch, board->inCheck);
        return 1;
    });

    printRate("evaluate", eval);
    printRate("see", see);
    printRate("generateMoves", generate);
    const double generateCost = generate.seconds / generate.calls;
    std::printf("one full evaluation costs %.2f move generations; one see %.2f\n",
                eval.seconds / eval.calls / generateCost, see.seconds / see.calls / generateCost);
    return 0;
}

void printTerms(SilentBoard& board) {
    EvalTerms terms;
    const int total = board.evaluateTerms(terms);
    for (int g = 0; g < GROUP_COUNT; ++g)
        std::printf("%s %d %d\n", evalGroupNames[g], terms.sum[g][WHITE], terms.sum[g][BLACK]);
    std::printf("total %d\n", total);
}

} // namespace

int benchEval(int argc, char** argv) {
    if (argc == 0)
        return speedBenchmark();
    auto board = makeEngine<SilentBoard>(0);
    int status = 0;
    for (int i = 0; i < argc; ++i) {
        if (i > 0)
            std::printf("\n");
        if (board->setPosition(argv[i])) {
            printTerms(*board);
        } else {
            std::printf("Bad FEN string !\n");
            status = 1;
        }
    }
    return status;
}
