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

} // namespace

PerftCounters oracleStats(ChessBoard& board, int depth) {
    PerftCounters c = {};
    walk(board, depth, 0, c);
    return c;
}

PerftCounters engineStats(ChessBoard& board, int depth) {
    board.perftCounters = {};
    board.perftStats(depth, 0);
    return board.perftCounters;
}

std::string countersText(const PerftCounters& c) {
    return "nodes " + std::to_string(c.nodes) + " captures " + std::to_string(c.captures) +
           " e.p. " + std::to_string(c.enPassant) + " checks " + std::to_string(c.checks) +
           " mates " + std::to_string(c.mates) + " promotions " + std::to_string(c.promotions) +
           " castles " + std::to_string(c.castles);
}

void expectStatsMatchOracle(ChessBoard& board, const std::string& fen, int maxDepth) {
    ASSERT_EQ(board.setPosition(fen.c_str()), 1) << fen;
    for (int depth = 1; depth <= maxDepth; ++depth)
        ASSERT_EQ(countersText(engineStats(board, depth)), countersText(oracleStats(board, depth)))
            << fen << " depth " << depth;
}
