// The consistency check, which the other tests use as their oracle, notices each kind of
// damage to the redundant forms of a position.
#include "test_support.h"

#include <gtest/gtest.h>

TEST(Consistency, NoticesEachKindOfDamage) {
    auto board = boardFrom(KIWIPETE_FEN);
    EXPECT_TRUE(board->checkConsistency().empty());
    for (void (*damage)(Position&) : {
             +[](Position& p) { p.bbColorPiece[WHITE] &= ~bit(0); },
             +[](Position& p) { p.pieceArray[24] = KNIGHT; },
             +[](Position& p) { p.bbPiece[WHITE][ROOK] ^= bit(0) | bit(8); },
             +[](Position& p) { p.bbAllPiece90R ^= bit(rot90[0]); },
             +[](Position& p) { p.bbAllPiece45L ^= bit(rot45L[0]); },
             +[](Position& p) { p.material[WHITE] -= 1; },
             +[](Position& p) { p.kingSquare[BLACK] = 59; },
         }) {
        Position p = *board;
        damage(p);
        EXPECT_FALSE(p.checkConsistency().empty());
    }
}
