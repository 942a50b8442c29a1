// The pawn-structure cache answers exactly what the evaluation computes afresh, and a
// position set up anew finds the same scores as one reached by moves.
#include "test_support.h"

#include <cstring>
#include <gtest/gtest.h>
#include <random>

namespace {

// The full score and every group's sums of `warm`, whose pawn cache holds whatever came
// before, against the same position on `cold`, which empties its pawn cache first.
void expectSameAsAfresh(ChessBoard& warm, ChessBoard& cold) {
    char fen[128];
    warm.toFen(fen);
    ASSERT_EQ(cold.setPosition(fen), 1) << fen;
    cold.pawnCache.clear();
    EvalTerms cached, fresh;
    const int full = warm.evaluate(-INFINITE_SCORE, INFINITE_SCORE, 0);
    ASSERT_EQ(warm.evaluateTerms(cached), cold.evaluateTerms(fresh)) << fen;
    ASSERT_EQ(std::memcmp(cached.sum, fresh.sum, sizeof cached.sum), 0) << fen;
    cold.pawnCache.clear();
    ASSERT_EQ(full, cold.evaluate(-INFINITE_SCORE, INFINITE_SCORE, 0)) << fen;
}

} // namespace

// Random games keep the pawns of one structure under ever different pieces, so the pawn
// cache is read back in positions where blockers, stage and king shelter have changed; the
// games are then taken back move by move and every position checked again on the way.
TEST(PawnCache, GivesTheScoresComputedAfresh) {
    auto warm = boardFrom(START_FEN), cold = boardFrom(START_FEN);
    std::mt19937 random(11);
    const std::vector<PerftCase> suite = loadPerftSuite("random.perft");
    int compared                       = 0;
    for (std::size_t i = 0; i < suite.size(); i += 11) {
        ASSERT_EQ(warm->setPosition(suite[i].fen.c_str()), 1) << suite[i].fen;
        std::vector<Move> played;
        for (int ply = 0; ply < 16; ++ply) {
            expectSameAsAfresh(*warm, *cold);
            const std::vector<Move> legal = legalMoves(*warm);
            if (legal.empty())
                break;
            played.push_back(legal[random() % legal.size()]);
            warm->makeMove(played.back());
            ++compared;
        }
        for (; !played.empty(); played.pop_back()) {
            warm->unmakeMove(played.back());
            expectSameAsAfresh(*warm, *cold);
        }
        if (HasFatalFailure())
            return;
    }
    EXPECT_GT(compared, 8000);
}
