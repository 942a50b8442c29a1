// The consistency check names each kind of mismatch, in its fixed order.
#include "test_support.h"

#include <gtest/gtest.h>

namespace {

std::vector<std::string> messages(const Position& p) {
    std::vector<std::string> out;
    for (const char* m : p.checkConsistency())
        out.emplace_back(m);
    return out;
}

} // namespace

TEST(Consistency, ReportsEachMismatchByItsMessage) {
    auto board = boardFrom(START_FEN);
    EXPECT_TRUE(messages(*board).empty());

    // A piece missing from both colour boards is a colour mismatch, not a piece-board one.
    Position p = *board;
    p.bbColorPiece[WHITE] &= ~bit(1);
    EXPECT_EQ(messages(p), (std::vector<std::string>{"piece array different than bbColorPiece",
                                                     "bad white material value"}));

    p                = *board;
    p.pieceArray[20] = 9;
    EXPECT_EQ(messages(p), std::vector<std::string>{"wrong value in piece array"});

    p                = *board;
    p.pieceArray[20] = KNIGHT; // in the mailbox only
    EXPECT_EQ(messages(p), (std::vector<std::string>{"piece array different than bbAllPiece",
                                                     "piece array different than bbColorPiece"}));

    p = *board;
    p.bbAllPiece90R ^= bit(rot90[0]);
    p.bbAllPiece45L ^= bit(rot45L[0]);
    EXPECT_EQ(messages(p),
              (std::vector<std::string>{"bitboard 90R is wrong", "bitboard 45L is wrong"}));

    // Extra rotated bits with no piece behind them go unnoticed: only missing ones count.
    p = *board;
    p.bbAllPiece45R |= bit(rot45R[30]);
    EXPECT_TRUE(messages(p).empty());

    p                         = *board;
    p.pieceCount[BLACK][ROOK] = 1;
    p.material[WHITE]         = 0;
    p.kingSquare[BLACK]       = 59;
    EXPECT_EQ(messages(p),
              (std::vector<std::string>{"bad number of black rook", "bad white material value",
                                        "bad king position for black"}));
}
