// What the generators produce beyond the counts perft checks: which list each kind of move
// comes in, and the order of promotions.
#include "test_support.h"

#include <gtest/gtest.h>

TEST(Generate, EachListHoldsItsOwnKindOfMove) {
    std::vector<std::string> fens = {"1n1n1k2/2P5/8/8/8/8/8/4K3 w - - 0 1",
                                     "4k3/8/8/2PpP3/8/8/8/4K3 w - d6 0 1"};
    for (const PerftCase& c : loadPerftSuite("tricky.perft"))
        fens.push_back(c.fen);
    for (const std::string& fen : fens) {
        auto board = boardFrom(fen);
        MoveEntry list[MAX_GENERATED];
        const int captures = board->generateCaptures(list);
        const int count    = captures + board->generateQuiets(list + captures);
        for (int i = 0; i < count; ++i) {
            const Move m = list[i].move;
            EXPECT_EQ(i < captures, moveCaptured(m) || movePromotion(m)) << fen;
            // Promotions come as four, queen first, then rook, knight, bishop.
            if (movePromotion(m) != QUEEN)
                continue;
            for (Piece next : {ROOK, KNIGHT, BISHOP}) {
                const Move p = list[++i].move;
                EXPECT_TRUE(i < captures && movePromotion(p) == next &&
                            moveFrom(p) == moveFrom(m) && moveTo(p) == moveTo(m))
                    << fen;
            }
        }
    }
    // A FEN's en-passant file with no pawn behind the target is not believed.
    MoveEntry list[MAX_GENERATED];
    EXPECT_EQ(boardFrom("4k3/8/8/2P5/8/8/8/4K3 w - d6 0 1")->generateCaptures(list), 0);
}
