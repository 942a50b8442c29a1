// The evaluation terms as relations: one change on the board makes one group better or worse
// for one colour, or leaves it as it was. Weights are free to change; signs and the
// conditions under which a term applies are not. Every position leaves the side to move
// mating material, so that no endgame draw zeroes the groups.
#include "test_support.h"

#include <gtest/gtest.h>
#include <tuple>

namespace {

int groupSum(const char* fen, EvalGroup group, Color colour) {
    EvalTerms terms;
    boardFrom(fen)->evaluateTerms(terms);
    return terms.sum[group][colour];
}

} // namespace

TEST(EvalTerms, EachChangeMovesItsGroupTheRightWay) {
    enum Effect { WORSE = -1, SAME = 0, BETTER = 1 };
    const char* const home    = "rq2k2r/pppppppp/8/8/8/8/5PPP/RQ3RK1 w - - 0 1";
    const char* const passer  = "n3k3/8/8/4P3/8/8/8/4K3 w - - 0 1";
    const char* const outpost = "4k3/8/8/3N4/8/8/P7/4K3 w - - 0 1";
    const std::tuple<const char*, const char*, EvalGroup, Color, Effect, const char*> cases[] = {
        {"4k3/2p5/8/8/8/8/2P5/4K3 w - - 0 1", "4k3/2p5/8/8/8/2P5/2P5/4K3 w - - 0 1", GROUP_PAWNS,
         WHITE, WORSE, "a doubled pawn"},
        {"4k3/2pp4/8/8/2PP4/8/8/4K3 w - - 0 1", "4k3/2pp4/8/8/3P4/8/2P5/4K3 w - - 0 1", GROUP_PAWNS,
         WHITE, WORSE, "a backward pawn"},
        {passer, "4k3/8/4n3/4P3/8/8/8/4K3 w - - 0 1", GROUP_PAWNS, WHITE, WORSE,
         "a passed pawn blocked by an enemy"},
        {"rnbqk3/8/8/4P3/8/8/8/RNBQK3 w - - 0 1", "n3k3/8/8/4P3/8/8/8/N3K3 w - - 0 1", GROUP_PAWNS,
         WHITE, BETTER, "a passed pawn counts more in the endgame"},
        {"6k1/8/8/8/8/8/3P4/3R2K1 w - - 0 1", "6k1/3p4/8/8/8/8/8/3R2K1 w - - 0 1", GROUP_PLACEMENT,
         WHITE, BETTER, "a rook on a half-open file"},
        {"8/R7/6k1/8/8/8/8/6K1 w - - 0 1", "6k1/R7/8/8/8/8/8/6K1 w - - 0 1", GROUP_PLACEMENT, WHITE,
         BETTER, "a rook on the seventh against the king on the eighth"},
        {outpost, "4k3/8/8/3N4/4P3/8/P7/4K3 w - - 0 1", GROUP_PLACEMENT, WHITE, BETTER,
         "a guarded outpost"},
        {START_FEN, "rnbqkbnr/pppppppp/8/8/8/5Q2/PPPPPPPP/RNB1KBNR w KQkq - 0 1", GROUP_PLACEMENT,
         WHITE, WORSE, "the queen out in the opening"},
        {"4k3/8/8/8/8/8/8/2B1KN2 w - - 0 1", "4k3/8/8/8/8/8/8/2B1KB2 w - - 0 1", GROUP_MATERIAL,
         WHITE, BETTER, "the bishop pair"},
        {"4k3/8/8/8/8/3n4/8/4K2R w - - 0 1", "4k3/8/8/8/8/3n4/3P4/4K2R w - - 0 1",
         GROUP_DEVELOPMENT, WHITE, WORSE, "a centre pawn blocked at home"},
        {"4k3/B6p/8/8/8/8/8/4K3 b - - 0 1", "4k3/B6p/1p6/8/8/8/8/4K3 b - - 0 1", GROUP_DEVELOPMENT,
         WHITE, WORSE, "a bishop trapped on a7"},
        {"r1bqk2r/pppp1ppp/2n2n2/2b1p3/2B1P3/5N2/PPPP1PPP/RNBQ1RK1 w kq - 0 1",
         "r1bqk2r/pppp1ppp/2n2n2/2b1p3/2B1P3/5N2/PPPP1PPP/RNBQ1K1R w kq - 0 1", GROUP_DEVELOPMENT,
         WHITE, WORSE, "a rook shut in by its king"},
        {"4k3/8/8/8/8/8/8/3QK3 w - - 0 1", "4k3/3Q4/8/8/8/8/8/4K3 w - - 0 1", GROUP_TROPISM, WHITE,
         BETTER, "a queen next to the enemy king"},
        {"4k3/8/8/8/8/8/8/N3K2R w - - 0 1", "4k3/8/8/8/2p5/8/8/N3K2R w - - 0 1",
         GROUP_SAFE_MOBILITY, WHITE, WORSE, "a square covered by an enemy pawn"},
        {home, "rq2k2r/pppppppp/8/8/8/7P/5PP1/RQ3RK1 w - - 0 1", GROUP_SHELTER, WHITE, WORSE,
         "a shelter pawn one step up"},
        {home, "rq2k2r/pppppppp/8/3N4/8/8/5PPP/RQ3RK1 w - - 0 1", GROUP_SHELTER, BLACK, WORSE,
         "a knight attacking next to the king"},
        {home, "4k3/8/8/8/8/8/5PP1/R5K1 w - - 0 1", GROUP_SHELTER, WHITE, SAME,
         "no shelter in the endgame"},
    };
    for (const auto& [before, after, group, colour, effect, why] : cases) {
        const int change = groupSum(after, group, colour) - groupSum(before, group, colour);
        EXPECT_EQ((change > 0) - (change < 0), int(effect))
            << why << ": " << evalGroupNames[group] << " changes by " << change;
    }
}
