// The evaluation: colour symmetry over many positions, the endgame draw, the lazy exit, and
// the terms as relations.
#include "eval/eval_tables.h"
#include "test_support.h"

#include <gtest/gtest.h>
#include <tuple>

namespace {

// Shelter is counted for White's king below square 23 and Black's above 40: a king on a3,
// h3, a6 or h6 has no mirror image on the other side of those bounds.
bool kingOnShelterBound(const ChessBoard& board) {
    const Bitboard bounds = bit(16) | bit(23) | bit(40) | bit(47);
    return board.gameStage <= 1 &&
           ((board.bbPiece[WHITE][KING] | board.bbPiece[BLACK][KING]) & bounds);
}

int fullEval(ChessBoard& board) {
    return board.evaluate(-INFINITE_SCORE, INFINITE_SCORE, 0);
}

int groupSum(const char* fen, EvalGroup group, Color colour) {
    EvalTerms terms;
    boardFrom(fen)->evaluateTerms(terms);
    return terms.sum[group][colour];
}

} // namespace

// Every term is computed per colour: the mirrored position must swap the White and Black
// sums of every group and give the side to move the same score. A sign or table error on
// one colour breaks this for most positions.
TEST(Evaluate, MirroredPositionScoresTheSame) {
    auto board = boardFrom(START_FEN), mirror = boardFrom(START_FEN);
    int compared = 0;
    for (const char* suite : {"tricky.perft", "random.perft"})
        for (const PerftCase& c : loadPerftSuite(suite)) {
            ASSERT_EQ(board->setPosition(c.fen.c_str()), 1) << c.fen;
            char flipped[128];
            board->toMirroredFen(flipped);
            ASSERT_EQ(mirror->setPosition(flipped), 1) << flipped;
            if (kingOnShelterBound(*board) || kingOnShelterBound(*mirror))
                continue;
            EvalTerms terms, mirrored;
            const int score = board->evaluateTerms(terms);
            ASSERT_EQ(mirror->evaluateTerms(mirrored), score) << c.fen << " / " << flipped;
            for (int g = 0; g < GROUP_COUNT; ++g)
                ASSERT_TRUE(terms.sum[g][WHITE] == mirrored.sum[g][BLACK] &&
                            terms.sum[g][BLACK] == mirrored.sum[g][WHITE])
                    << evalGroupNames[g] << " in " << c.fen;
            ASSERT_EQ(fullEval(*board), score) << c.fen;
            ++compared;
        }
    EXPECT_GT(compared, 5000);
}

// In the endgame a side to move without mating material (a knight or two, or a bishop) scores
// a draw, lazy or not, even a rook down; knight and bishop, two bishops, a rook, a queen or a
// pawn can mate. The opponent of such a side, and any side before the endgame, is evaluated
// normally.
TEST(Evaluate, EndgameDrawOnlyForTheSideToMoveThatCannotWin) {
    const std::pair<const char*, bool> cases[] = {
        {"4KN2", true},   {"3NKN2", true}, {"1KB1r3", true}, {"3BKN2", false},
        {"3BKB2", false}, {"4K2R", false}, {"Q3K3", false},  {"P3K3", false}};
    for (const auto& [rank, draw] : cases) {
        auto board = boardFrom(std::string("4k3/8/8/8/8/8/8/") + rank + " w - - 0 1");
        EXPECT_EQ(fullEval(*board) == 0 && board->evaluate(-100, 100, 1) == 0, draw) << rank;
    }
    EXPECT_GT(fullEval(*boardFrom("4k3/8/8/8/8/8/8/1KB1r3 b - - 0 1")), 100);
    EXPECT_LT(fullEval(*boardFrom("qq2k3/8/8/8/8/8/8/1KB5 w - - 0 1")), -1500); // phase 9
}

// Only lazy = 1 allows the exit, and only when the material balance is a margin outside the
// window; the exit answers the balance alone.
TEST(Evaluate, LazyExitAnswersTheMaterialOutsideTheWindow) {
    auto board = boardFrom("r1bqkbn1/pppp1ppp/2n5/4p3/2B1P3/5N2/PPPP1PPP/RNBQK2R w KQq - 0 1");
    const int material = board->material[WHITE] - board->material[BLACK], full = fullEval(*board);
    ASSERT_NE(full, material);
    // The window's edges a margin below and above the balance, and one step inside them.
    const int below = material - LAZY_MARGIN, above = material + LAZY_MARGIN;
    const int cases[][4] = {{below - 9, below, 1, material}, {above, above + 9, 1, material},
                            {below - 9, below + 1, 1, full}, {above - 1, above + 9, 1, full},
                            {below - 9, below, 0, full},     {below - 9, below, 2, full}};
    for (const auto& c : cases)
        EXPECT_EQ(board->evaluate(c[0], c[1], c[2]), c[3]) << c[0] << " " << c[1] << " " << c[2];
}

// One change on the board makes one group better or worse for one colour, or leaves it as it
// was. Weights are free to change; signs and the conditions under which a term applies are
// not. Every position leaves the side to move mating material, so that no endgame draw zeroes
// the groups.
TEST(EvalTerms, EachChangeMovesItsGroupTheRightWay) {
    enum Effect { WORSE = -1, SAME = 0, BETTER = 1 };
    const char* const home = "rq2k2r/pppppppp/8/8/8/8/5PPP/RQ3RK1 w - - 0 1";
    const std::tuple<const char*, const char*, EvalGroup, Color, Effect, const char*> cases[] = {
        {"4k3/2p5/8/8/8/8/2P5/4K3 w - - 0 1", "4k3/2p5/8/8/8/2P5/2P5/4K3 w - - 0 1", GROUP_PAWNS,
         WHITE, WORSE, "a doubled pawn"},
        {"6k1/8/8/8/8/8/3P4/3R2K1 w - - 0 1", "6k1/3p4/8/8/8/8/8/3R2K1 w - - 0 1", GROUP_PLACEMENT,
         WHITE, BETTER, "a rook on a half-open file"},
        {"4k3/8/8/8/8/8/8/2B1KN2 w - - 0 1", "4k3/8/8/8/8/8/8/2B1KB2 w - - 0 1", GROUP_MATERIAL,
         WHITE, BETTER, "the bishop pair"},
        {"4k3/B6p/8/8/8/8/8/4K3 b - - 0 1", "4k3/B6p/1p6/8/8/8/8/4K3 b - - 0 1", GROUP_DEVELOPMENT,
         WHITE, WORSE, "a bishop trapped on a7"},
        {"4k3/8/8/8/8/8/8/3QK3 w - - 0 1", "4k3/3Q4/8/8/8/8/8/4K3 w - - 0 1", GROUP_TROPISM, WHITE,
         BETTER, "a queen next to the enemy king"},
        {"4k3/8/8/8/8/8/8/N3K2R w - - 0 1", "4k3/8/8/8/2p5/8/8/N3K2R w - - 0 1",
         GROUP_SAFE_MOBILITY, WHITE, WORSE, "a square covered by an enemy pawn"},
        {home, "rq2k2r/pppppppp/8/8/8/7P/5PP1/RQ3RK1 w - - 0 1", GROUP_SHELTER, WHITE, WORSE,
         "a shelter pawn one step up"},
        {home, "4k3/8/8/8/8/8/5PP1/R5K1 w - - 0 1", GROUP_SHELTER, WHITE, SAME,
         "no shelter in the endgame"},
    };
    for (const auto& [before, after, group, colour, effect, why] : cases) {
        const int change = groupSum(after, group, colour) - groupSum(before, group, colour);
        EXPECT_EQ((change > 0) - (change < 0), int(effect))
            << why << ": " << evalGroupNames[group] << " changes by " << change;
    }
}
