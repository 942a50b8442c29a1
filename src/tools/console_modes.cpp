// The console forms of perft and divide, the command-line modes that print them from the
// initial position or from a FEN, and the engine's own reports of the same walks.
#include "tools/console_modes.h"

#include "board/chess_board.h"
#include "board/trace.h"
#include "platform/send_command.h"
#include "tools/profiler.h"

#include <cinttypes>
#include <cstdio>

void printPerftTable(ChessBoard& board, int maxDepth) {
    board.perftCounters = {};
    std::fputs("depth |        nodes |     captures |          e.p |        check |         mate |"
               "    promotion |       castle \n",
               stdout);
    std::fflush(stdout);
    for (int depth = 1; depth <= maxDepth; ++depth) {
        board.perftCounters = {};
        board.perftStats(depth, 0);
        const PerftCounters& c = board.perftCounters;
        sendCommand("% 2d. %12" PRId64 " %12" PRId64 " %12" PRId64 " %12" PRId64 " %12" PRId64
                    " %12" PRId64 " %12" PRId64,
                    depth, std::int64_t(c.nodes), std::int64_t(c.captures),
                    std::int64_t(c.enPassant), std::int64_t(c.checks), std::int64_t(c.mates),
                    std::int64_t(c.promotions), std::int64_t(c.castles));
    }
}

void printDivideListing(ChessBoard& board, int depth) {
    const int rows = board.divide(depth + 1);
    for (int i = 0; i < rows; ++i)
        sendCommand("%12s : %12" PRId64, board.divideRows[i].text,
                    std::int64_t(board.divideRows[i].count));
}

namespace {

// False (after "Bad FEN string !") when the FEN is rejected.
bool loadFen(ChessBoard& engine, const char* fen) {
    if (fen && !engine.setPosition(fen)) {
        std::printf("Bad FEN string !\n");
        return false;
    }
    return true;
}

} // namespace

int runPerftMode(ChessBoard& engine, int depth, const char* fen) {
    if (!loadFen(engine, fen))
        return 0;
    printPerftTable(engine, depth);
    return 1;
}

int runDivideMode(ChessBoard& engine, int depth, const char* fen) {
    if (!loadFen(engine, fen))
        return 0;
    printDivideListing(engine, depth);
    return 1;
}

// The engine's trace reports of the same walks (kept API, see chess_board.h).
void ChessBoard::perftReport(int deepest) {
    trace("Perft result :\n");
    for (int depth = 1; depth <= deepest; ++depth) {
        perftCounters = {};
        perftStats(depth, 0);
        if (depth <= MAX_PERFT_ROWS)
            perftRows[depth] = perftCounters;
        trace("%12I64d", perftCounters.nodes);
    }
    printProfile();
    hookThinkEnded();
}

int ChessBoard::divideReport(int depth) {
    const int rows = divide(depth + 1);
    trace("Divide result :\n");
    hookThinkEnded();
    return rows;
}
