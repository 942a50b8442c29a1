// The toolkit's pin test, insufficient-material test and slice sort.
#include "test_support.h"

#include <gtest/gtest.h>

TEST(Attacks, PinsAlongEveryKindOfLine) {
    const std::pair<const char*, bool> cases[] = {
        {"4r1k1/8/8/8/8/8/3N4/4K3 w - - 0 1", false},   // not on the line
        {"4r1k1/8/8/8/8/8/4N3/4K3 w - - 0 1", true},    // file
        {"6k1/8/8/8/8/8/8/r2NK3 w - - 0 1", true},      // rank
        {"6k1/8/8/b7/8/8/3N4/4K3 w - - 0 1", true},     // a8-h1 diagonal
        {"6k1/8/8/8/7b/8/5N2/4K3 w - - 0 1", true},     // a1-h8 diagonal
        {"6k1/8/8/r7/8/8/3N4/4K3 w - - 0 1", false},    // a rook does not pin diagonally
        {"4r1k1/8/8/8/4n3/8/4N3/4K3 w - - 0 1", false}, // shielded by another piece
    };
    for (const auto& [fen, pinned] : cases) {
        auto board = boardFrom(fen);
        EXPECT_EQ(board->isPinned(lowestSquare(board->bbPiece[WHITE][KNIGHT]), WHITE), pinned)
            << fen;
    }
}

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

TEST(Attacks, SortOrdersOnlyItsSliceByScore) {
    MoveEntry list[6] = {{1, 5}, {2, 1}, {3, 9}, {4, 3}, {5, 9}, {6, -4}};
    ChessBoard::sortMoves(list, 1, 4);
    const int scores[6] = {5, 9, 9, 3, 1, -4};
    for (int i = 0; i < 6; ++i)
        EXPECT_EQ(list[i].score, scores[i]) << i;
}
