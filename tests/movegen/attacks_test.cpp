// The insufficient-material test behind the evaluation's endgame draw. (The pin test and the
// slice sort have no caller yet; their tests come with the first one.)
#include "test_support.h"

#include <gtest/gtest.h>

// A lone king, a knight or two, or a bishop cannot mate; knight and bishop, two bishops, a
// rook, a queen or a pawn can.
TEST(Attacks, InsufficientMaterial) {
    const std::pair<const char*, bool> cases[] = {
        {"4K3", true},    {"4KN2", true},  {"3NKN2", true}, {"4KB2", true}, {"3BKN2", false},
        {"3BKB2", false}, {"4K2R", false}, {"Q3K3", false}, {"P3K3", false}};
    for (const auto& [rank, cannotWin] : cases)
        EXPECT_EQ(
            boardFrom(std::string("4k3/8/8/8/8/8/8/") + rank + " b - - 0 1")->cannotWin(WHITE),
            cannotWin)
            << rank;
}
