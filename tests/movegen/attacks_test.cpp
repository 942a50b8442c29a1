// The attack toolkit beyond plain attack tests: x-rays, pins, insufficient material, sorting.
#include "test_support.h"

#include <gtest/gtest.h>

TEST(Attacks, XRayThroughTheRemovedPiece) {
    // The king on e1 checked along the e-file: e1 is "safe" from the rook until the king
    // itself is taken out of the occupancy, and then d1/f1 stay safe while e2 does not.
    auto board = boardFrom("4r1k1/8/8/8/8/8/8/4K3 w - - 0 1");
    EXPECT_TRUE(board->isAttacked(4, BLACK));
    EXPECT_FALSE(board->isAttacked(3, BLACK));
    board = boardFrom("4r1k1/8/8/8/4P3/8/8/4K3 w - - 0 1");
    EXPECT_FALSE(board->isAttacked(4, BLACK));
    EXPECT_TRUE(board->isAttackedWithout(28, 4, BLACK));
    EXPECT_FALSE(board->isAttackedWithout(20, 4, BLACK));
}

TEST(Attacks, PinsAlongEveryKindOfLine) {
    struct Case {
        const char* fen;
        Square square;
        bool pinned;
    };
    const Case cases[] = {
        {"4r1k1/8/8/8/8/8/4N3/4K3 w - - 0 1", 12, true},    // file
        {"6k1/8/8/8/8/8/8/r2NK3 w - - 0 1", 3, true},       // rank
        {"6k1/8/8/b7/8/8/3N4/4K3 w - - 0 1", 11, true},     // a8-h1 diagonal
        {"6k1/8/8/8/7b/8/5N2/4K3 w - - 0 1", 13, true},     // a1-h8 diagonal
        {"6k1/8/8/r7/8/8/3N4/4K3 w - - 0 1", 11, false},    // a rook does not pin diagonally
        {"4r1k1/8/8/8/4n3/8/4N3/4K3 w - - 0 1", 12, false}, // shielded by another piece
        {"6k1/8/8/8/8/8/8/2N1K3 w - - 0 1", 2, false},      // no slider behind
    };
    for (const Case& c : cases) {
        auto board = boardFrom(c.fen);
        EXPECT_EQ(board->isPinned(c.square, WHITE), c.pinned) << c.fen;
    }
}

TEST(Attacks, InsufficientMaterial) {
    struct Case {
        const char* fen;
        bool cannotWin;
    };
    const Case cases[] = {
        {"4k3/8/8/8/8/8/8/4K3 w - - 0 1", true},    {"4k3/8/8/8/8/8/8/4KN2 w - - 0 1", true},
        {"4k3/8/8/8/8/8/8/3NKN2 w - - 0 1", true},  {"4k3/8/8/8/8/8/8/4KB2 w - - 0 1", true},
        {"4k3/8/8/8/8/8/8/3BKN2 w - - 0 1", false}, {"4k3/8/8/8/8/8/8/3BKB2 w - - 0 1", false},
        {"4k3/8/8/8/8/8/P7/4K3 w - - 0 1", false},  {"4k3/8/8/8/8/8/8/4K2R w - - 0 1", false},
    };
    for (const Case& c : cases)
        EXPECT_EQ(boardFrom(c.fen)->cannotWin(WHITE), c.cannotWin) << c.fen;
}

TEST(Attacks, SortOrdersBySlice) {
    MoveEntry list[6] = {{1, 5}, {2, 1}, {3, 9}, {4, 3}, {5, 9}, {6, -4}};
    ChessBoard::sortMoves(list, 1, 4);
    EXPECT_EQ(list[0].move, 1u); // outside the slice
    EXPECT_EQ(list[1].score, 9);
    EXPECT_EQ(list[2].score, 9);
    EXPECT_EQ(list[3].score, 3);
    EXPECT_EQ(list[4].score, 1);
    EXPECT_EQ(list[5].move, 6u);
}
