// The searches' deferred exchange scoring against scoring every exchange first: the same
// moves handed out in the same order with the same scores, ties included.
#include "movegen/ordering.h"
#include "test_support.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <random>

namespace {

// Picks both lists to the end. The exact list carries no pending marks, so its picks are the
// plain selection step.
void expectSamePicks(ChessBoard& board, MoveEntry* exact, MoveEntry* deferred, int count,
                     const std::string& fen) {
    for (int i = 0; i < count; ++i) {
        board.pickMove(exact, i, count);
        board.pickMove(deferred, i, count);
        ASSERT_TRUE(exact[i].move == deferred[i].move && exact[i].score == deferred[i].score)
            << fen << " pick " << i;
    }
}

} // namespace

// History counts drawn from a few values make ties among quiet moves common, and the hash
// move and killers are drawn from the position's own moves, so every band is met.
TEST(MoveOrdering, DeferredExchangesPickTheOrderOfExchangesScoredFirst) {
    auto board = boardFrom(START_FEN);
    std::mt19937 random(5);
    const std::vector<PerftCase> suite = loadPerftSuite("random.perft");
    int pending                        = 0;
    for (std::size_t c = 0; c < suite.size(); c += 5) {
        ASSERT_EQ(board->setPosition(suite[c].fen.c_str()), 1);
        for (auto& row : board->historyTable[board->sideToMove])
            for (std::int32_t& h : row)
                h = std::int32_t(random() % 4) * 500;
        MoveEntry exact[MAX_GENERATED], deferred[MAX_GENERATED];
        const int count = board->generatePseudoLegalMoves(exact);
        if (count == 0)
            continue;
        auto any                    = [&] { return exact[random() % count].move; };
        const Move hash             = random() % 2 ? any() : NO_MOVE;
        const int ply               = 2 + int(random() % 3);
        board->killerMove1[ply]     = any();
        board->killerMove2[ply]     = any();
        board->mateKiller[ply]      = random() % 4 ? NO_MOVE : any();
        board->killerMove1[ply - 2] = any();
        std::copy(exact, exact + count, deferred);
        board->scoreMoves(exact, count, hash, ply);
        board->scoreMovesDeferred(deferred, count, hash, ply);
        pending += int(std::count_if(deferred, deferred + count, [](const MoveEntry& e) {
            return (e.move & EXCHANGE_PENDING) != 0;
        }));
        expectSamePicks(*board, exact, deferred, count, suite[c].fen);

        const int captures = board->generateCaptures(exact);
        std::copy(exact, exact + captures, deferred);
        const Move capture = captures ? exact[random() % captures].move : NO_MOVE;
        board->scoreCaptures(exact, captures, capture);
        board->scoreCapturesDeferred(deferred, captures, capture);
        expectSamePicks(*board, exact, deferred, captures, suite[c].fen);
        if (HasFatalFailure())
            return;
    }
    EXPECT_GT(pending, 1000);
}
