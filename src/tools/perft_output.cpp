// Writes perft tables and divide listings in the engine's console format.
#include "tools/perft_output.h"

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

// The engine's own reports of the same walks: the node counts go to the trace and the
// profile is printed. No command asks for them; the console forms above are what users see.
void ChessBoard::perftReport(int deepest) {
    trace("Perft result :\n");
    for (int depth = 1; depth <= deepest; ++depth) {
        perftCounters = {};
        perftStats(depth, 0);
        trace("%12I64d", perftCounters.nodes);
    }
    printProfile();
    hookThinkEnded();
}

void ChessBoard::divideReport(int depth) {
    divide(depth + 1);
    trace("Divide result :\n");
    hookThinkEnded();
}
