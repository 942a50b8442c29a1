// Individual evaluation terms, each pinned by small positions: either the value one group
// takes, or the difference a single change on the board makes to it. In the endgame the side
// to move must have mating material, or the whole evaluation is the draw score.
#include "test_support.h"

#include <gtest/gtest.h>

namespace {

int groupSum(const std::string& fen, EvalGroup group, Color colour) {
    auto board = boardFrom(fen);
    EvalTerms terms;
    board->evaluateTerms(terms);
    return terms.sum[group][colour];
}

struct GroupCase {
    const char* fen;
    Color colour;
    int expected;
    const char* why;
};

void expectGroup(EvalGroup group, std::initializer_list<GroupCase> cases) {
    for (const GroupCase& c : cases)
        EXPECT_EQ(groupSum(c.fen, group, c.colour), c.expected)
            << evalGroupNames[group] << ": " << c.why << " in " << c.fen;
}

// The same group in two positions that differ by one change.
struct ChangeCase {
    const char* before;
    const char* after;
    Color colour;
    int difference;
    const char* why;
};

void expectChange(EvalGroup group, std::initializer_list<ChangeCase> cases) {
    for (const ChangeCase& c : cases)
        EXPECT_EQ(groupSum(c.after, group, c.colour) - groupSum(c.before, group, c.colour),
                  c.difference)
            << evalGroupNames[group] << ": " << c.why << " from " << c.before << " to " << c.after;
}

} // namespace

TEST(EvalTerms, PawnStructure) {
    expectGroup(
        GROUP_PAWNS,
        {
            {"4k3/2p5/8/8/8/2P5/2P5/4K3 w - - 0 1", WHITE, -50, "two isolated, one doubled"},
            {"4k3/2p5/8/8/8/2P5/2P5/4K3 w - - 0 1", BLACK, -20, "isolated, not passed"},
            {"4k3/2pp4/8/8/3P4/8/2P5/4K3 w - - 0 1", WHITE, -10, "c2 backward"},
            {"4k3/2pp4/8/8/3P4/8/2P5/4K3 w - - 0 1", BLACK, 0, "level neighbours"},
        });
}

TEST(EvalTerms, PassedPawns) {
    expectGroup(GROUP_PAWNS,
                {
                    // Endgame row: a pawn on its fifth rank earns 100; each pawn here is
                    // also isolated (-20) unless it has a neighbour.
                    {"n3k3/8/8/4P3/8/8/8/4K3 w - - 0 1", WHITE, 80, "free passer"},
                    {"4k3/8/4n3/4P3/8/8/8/4K3 w - - 0 1", WHITE, 30, "blocked: half back"},
                    {"4k3/8/4N3/4P3/8/8/8/4K3 w - - 0 1", WHITE, 80, "own piece does not block"},
                    // d5 (100) supported by e4 (+50); e4 (40) backward (-10).
                    {"n3k3/8/8/3P4/4P3/8/8/4K3 w - - 0 1", WHITE, 180, "supported passer"},
                    {"4k3/8/3n4/3P4/4P3/8/8/4K3 w - - 0 1", WHITE, 130, "blocked and supported"},
                    // Middlegame row: the fifth rank earns 50.
                    {"rnbqk3/8/8/4P3/8/8/8/RNBQK3 w - - 0 1", WHITE, 30, "middlegame passer"},
                    {"4k3/8/8/8/8/4p3/4P3/4K3 w - - 0 1", WHITE, -20, "rammed: not passed"},
                    {"4k3/8/8/3p4/8/4P3/8/4K3 w - - 0 1", WHITE, -20, "enemy on the next file"},
                });
}

TEST(EvalTerms, RookAndQueenBonuses) {
    expectChange(GROUP_PLACEMENT,
                 {
                     {"6k1/8/8/8/8/8/3P4/3R2K1 w - - 0 1", "6k1/8/8/8/8/8/8/3R2K1 w - - 0 1", WHITE,
                      15, "open file"},
                     {"6k1/8/8/8/8/8/3P4/3R2K1 w - - 0 1", "6k1/3p4/8/8/8/8/8/3R2K1 w - - 0 1",
                      WHITE, 10, "half-open file"},
                     {"8/R7/6k1/8/8/8/8/6K1 w - - 0 1", "6k1/R7/8/8/8/8/8/6K1 w - - 0 1", WHITE, 20,
                      "rook on the seventh against a king on the eighth"},
                     {"8/R7/6k1/8/8/8/8/6K1 w - - 0 1", "8/R5p1/6k1/8/8/8/8/6K1 w - - 0 1", WHITE,
                      20, "rook on the seventh against pawns there"},
                     {"8/Q7/6k1/8/8/8/8/6K1 w - - 0 1", "6k1/Q7/8/8/8/8/8/6K1 w - - 0 1", WHITE, 10,
                      "queen on the seventh"},
                     {"6k1/8/8/8/8/6K1/r7/8 b - - 0 1", "6k1/8/8/8/8/8/r7/6K1 b - - 0 1", BLACK, 20,
                      "Black's rook on its seventh"},
                 });
}

TEST(EvalTerms, BishopPair) {
    expectGroup(GROUP_MATERIAL, {
                                    {"4k3/8/8/8/8/8/8/2B1KN2 w - - 0 1", WHITE, 650, "no pair"},
                                    {"4k3/8/8/8/8/8/8/2B1KB2 w - - 0 1", WHITE, 700, "pair"},
                                    {"4k3/8/8/8/8/8/8/1BB1KB2 w - - 0 1", WHITE, 1025, "still one"},
                                });
}

TEST(EvalTerms, DevelopmentPenalties) {
    constexpr const char* CASTLED =
        "r1bqk2r/pppp1ppp/2n2n2/2b1p3/2B1P3/5N2/PPPP1PPP/RNBQ1RK1 w kq - 0 1";
    expectGroup(
        GROUP_DEVELOPMENT,
        {
            {"4k3/8/8/8/8/3n4/3P4/4K3 w - - 0 1", WHITE, -20, "d-pawn blocked by an enemy"},
            {"4k3/8/8/8/8/4B3/4P3/4K3 w - - 0 1", WHITE, -20, "e-pawn blocked by its own bishop"},
            {"4k3/B7/1p6/8/8/8/8/4K3 b - - 0 1", WHITE, -50, "bishop trapped on a7"},
            {"4k3/7B/6p1/8/8/8/8/4K3 b - - 0 1", WHITE, -50, "bishop trapped on h7"},
            {"4k3/B6B/1p4p1/8/8/8/8/4K3 w - - 0 1", WHITE, -50, "only one counted"},
            {"4k3/B7/8/8/8/8/8/4K3 w - - 0 1", WHITE, 0, "no pawn on b6"},
            {"r1bqk2r/pppp1ppp/2n2n2/2b1p3/2B1P3/5N2/PPPP1PPP/RNBQ1K1R w kq - 0 1", WHITE, -50,
             "rook shut in by the king on f1"},
            {CASTLED, WHITE, 0, "castled"},
            {"qq2k3/8/8/8/8/8/8/RK6 w - - 0 1", WHITE, -50, "rook shut in on the queen side"},
            {"4k3/8/8/8/8/8/8/RK6 w - - 0 1", WHITE, 0, "endgame: the king walks out"},
        });
}

TEST(EvalTerms, EarlyQueenOnlyInTheOpening) {
    expectChange(
        GROUP_PLACEMENT,
        {
            // The queen leaves the first rank's -10 behind but pays 20 in the opening.
            {START_FEN, "rnbqkbnr/pppppppp/8/8/8/5Q2/PPPPPPPP/RNB1KBNR w KQkq - 0 1", WHITE, -10,
             "opening"},
            {"r2qk2r/pppppppp/8/8/8/8/PPPPPPPP/R2QK2R w - - 0 1",
             "r2qk2r/pppppppp/8/8/8/5Q2/PPPPPPPP/R3K2R w - - 0 1", WHITE, 10, "middlegame"},
        });
}

TEST(EvalTerms, KnightOutposts) {
    constexpr const char* ALONE = "4k3/8/8/3N4/8/8/P7/4K3 w - - 0 1";
    expectChange(GROUP_PLACEMENT,
                 {
                     {ALONE, "4k3/8/8/3N4/4P3/8/P7/4K3 w - - 0 1", WHITE, 32, "guarded outpost"},
                     {ALONE, "4k3/2p5/8/3N4/4P3/8/P7/4K3 w - - 0 1", WHITE, 0, "c-pawn can chase"},
                     {ALONE, "4k3/3p4/8/3N4/4P3/8/P7/4K3 w - - 0 1", WHITE, 32,
                      "a pawn on its own file cannot"},
                     {"4k3/7p/8/8/3n4/8/8/4K3 b - - 0 1", "4k3/7p/8/2p5/3n4/8/8/4K3 b - - 0 1",
                      BLACK, 32, "Black's outpost on d4"},
                 });
}

TEST(EvalTerms, TropismAndMobility) {
    expectGroup(GROUP_TROPISM, {
                                   {"4k3/8/8/8/8/8/8/3QK3 w - - 0 1", WHITE, 0, "queen far away"},
                                   {"4k3/3Q4/8/8/8/8/8/4K3 w - - 0 1", WHITE, 40, "queen next"},
                                   {"4k3/8/2B2N2/4R3/8/8/8/4K3 w - - 0 1", WHITE, 60,
                                    "bishop 2, knight 2, rook 3"},
                               });
    // A knight in the corner reaches b3 and c2; a black pawn on c4 makes b3 unsafe.
    expectGroup(GROUP_MOBILITY, {{"4k3/8/8/8/2p5/8/8/N3K3 b - - 0 1", WHITE, 2, "b3, c2"}});
    expectGroup(GROUP_SAFE_MOBILITY, {{"4k3/8/8/8/2p5/8/8/N3K3 b - - 0 1", WHITE, 1, "c2"}});
}

TEST(EvalTerms, KingShelterAndRing) {
    // Middlegame material with every black piece shut in behind its pawns, so nothing attacks
    // the squares around White's king.
    expectGroup(
        GROUP_SHELTER,
        {
            {"rq2k2r/pppppppp/8/8/8/8/5PPP/RQ3RK1 w - - 0 1", WHITE, 0, "pawns at home"},
            {"rq2k2r/pppppppp/8/8/8/7P/5PP1/RQ3RK1 w - - 0 1", WHITE, -20, "h-pawn one step"},
            {"rq2k2r/pppppppp/8/8/7P/8/5PP1/RQ3RK1 w - - 0 1", WHITE, -25, "h-pawn two steps"},
            {"rq2k2r/pppppppp/8/8/8/8/5PP1/RQ3RK1 w - - 0 1", WHITE, -30, "no h-pawn"},
            {"rq2k2r/pppppppp/8/8/8/8/5PPP/1KRQ3R w - - 0 1", WHITE, -90,
             "king b1, nothing on a-c"},
            {"rq2k2r/pppppppp/8/8/8/8/5PPP/RQ3R1K w - - 0 1", WHITE, 0, "king h1: no i-file"},
            {"rq2k2r/pppppppp/8/3N4/8/8/5PPP/RQ3RK1 w - - 0 1", BLACK, -10, "knight hits e7"},
            {"rq5r/pppppppp/8/8/4k3/8/5PPP/R4RKQ w - - 0 1", BLACK, 0, "Black's king away"},
            {"4k3/8/8/8/8/8/8/R5K1 w - - 0 1", WHITE, 0, "endgame: no shelter"},
        });
}
