#include "movegen/perft_oracle.h"

#include <gtest/gtest.h>

namespace {

void walk(ChessBoard& b, int depth, int listStart, PerftCounters& c) {
    MoveEntry* list    = b.moveStack + listStart;
    const bool checked = b.sideToMoveInCheck();
    const int count    = b.generateMoves(list, checked);
    for (int i = 0; i < count; ++i) {
        const Move m = list[i].move;
        if (b.makeMove(m)) {
            if (depth > 1) {
                walk(b, depth - 1, listStart + count, c);
            } else {
                ++c.nodes;
                c.captures += moveCaptured(m) != EMPTY;
                c.enPassant += isEnPassant(m);
                c.promotions += movePromotion(m) != EMPTY;
                c.castles += isCastle(m);
                if (b.sideToMoveInCheck()) {
                    ++c.checks;
                    MoveEntry* replies   = list + count;
                    const int replyCount = b.generateMoves(replies, 1);
                    bool escaped         = false;
                    for (int r = 0; r < replyCount && !escaped; ++r) {
                        escaped = b.makeMove(replies[r].move);
                        b.unmakeMove(replies[r].move);
                    }
                    c.mates += !escaped;
                }
            }
        }
        b.unmakeMove(m);
    }
    b.inCheck = checked;
}

// "nodes N captures N ..." for test messages; equal texts mean equal counters.
std::string countersText(const PerftCounters& c) {
    return "nodes " + std::to_string(c.nodes) + " captures " + std::to_string(c.captures) +
           " e.p. " + std::to_string(c.enPassant) + " checks " + std::to_string(c.checks) +
           " mates " + std::to_string(c.mates) + " promotions " + std::to_string(c.promotions) +
           " castles " + std::to_string(c.castles);
}

} // namespace

void expectStatsMatchOracle(ChessBoard& board, const std::string& fen, int maxDepth) {
    ASSERT_EQ(board.setPosition(fen.c_str()), 1) << fen;
    for (int depth = 1; depth <= maxDepth; ++depth) {
        PerftCounters oracle = {};
        walk(board, depth, 0, oracle);
        board.perftCounters = {};
        board.perftStats(depth, 0);
        ASSERT_EQ(countersText(board.perftCounters), countersText(oracle))
            << fen << " depth " << depth;
    }
}
