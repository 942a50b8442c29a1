// Move ordering: the static exchange evaluator on classic exchanges, and the score bands of
// the main and quiescence lists.
#include "test_support.h"

#include <cstring>
#include <gtest/gtest.h>

namespace {

// The legal move written in coordinates ("e7e8q" for a promotion).
Move findMove(ChessBoard& board, const char* text) {
    const Square from            = squareAt(text[0] - 'a', text[1] - '1');
    const Square to              = squareAt(text[2] - 'a', text[3] - '1');
    const char* promotionLetters = " pnbrqk";
    const Piece promotion =
        text[4] ? Piece(std::strchr(promotionLetters, text[4]) - promotionLetters) : EMPTY;
    for (Move m : legalMoves(board))
        if (moveFrom(m) == from && moveTo(m) == to && movePromotion(m) == promotion)
            return m;
    ADD_FAILURE() << "no legal move " << text;
    return NO_MOVE;
}

int mainScore(ChessBoard& board, Move m, Move hashMove, int ply) {
    MoveEntry entry{m, 0};
    board.scoreMoves(&entry, 1, hashMove, ply);
    return entry.score;
}

int quiescenceScore(ChessBoard& board, Move m, Move hashMove) {
    MoveEntry entry{m, 0};
    board.scoreCaptures(&entry, 1, hashMove);
    return entry.score;
}

} // namespace

TEST(StaticExchange, ClassicExchanges) {
    struct Case {
        const char* fen;
        const char* move;
        int expected;
        const char* why;
    };
    const Case cases[] = {
        {"4k3/8/8/3n4/8/8/8/3RK3 w - - 0 1", "d1d5", 325, "undefended knight"},
        {"4k3/8/4p3/3p4/8/8/8/3QK3 w - - 0 1", "d1d5", -875, "queen takes a defended pawn"},
        {"4r1k1/8/8/4n3/8/8/4R3/6K1 w - - 0 1", "e2e5", -175, "rook for knight"},
        {"4r1k1/8/8/4n3/8/8/4R3/4Q1K1 w - - 0 1", "e2e5", 325, "the queen behind decides"},
        {"4r1k1/4r3/8/4n3/8/8/4R3/4Q1K1 w - - 0 1", "e2e5", -175, "so do Black's rooks"},
        {"4k3/8/8/4p3/8/2B5/8/b3K3 w - - 0 1", "c3e5", -225, "a slider behind the taker"},
        {"3rk3/8/8/3pP3/8/8/8/4K3 w - d6 0 1", "e5d6", 0, "en passant, retaken"},
        {"3rk3/8/8/3pP3/8/8/8/3RK3 w - d6 0 1", "e5d6", 100, "the taken pawn uncovers a rook"},
        {"8/4P3/8/8/8/8/k7/4K3 w - - 0 1", "e7e8q", 875, "free promotion"},
        {"r7/4P3/8/8/8/8/k7/4K3 w - - 0 1", "e7e8q", -100, "promotion retaken"},
        {"rk6/1P6/8/8/8/8/8/4K3 w - - 0 1", "b7a8q", 400, "the king retakes the new queen"},
        {"rk6/1P6/8/8/8/8/8/R3K3 w - - 0 1", "b7a8q", 1375, "the king may not retake"},
        {"8/8/5k2/4p3/8/8/8/4RK2 w - - 0 1", "e1e5", -400, "the king retakes last"},
        {"8/8/5k2/4p3/8/2B5/8/4RK2 w - - 0 1", "e1e5", 100, "the king may not retake"},
        {"4k3/8/8/8/P7/1P6/4K3/r7 b - - 0 1", "a1a4", -400, "Black's rook for a pawn"},
    };
    for (const Case& c : cases) {
        auto board   = boardFrom(c.fen);
        const Move m = findMove(*board, c.move);
        EXPECT_EQ(board->see(m), c.expected) << c.why << ": " << c.move << " in " << c.fen;
    }
}

TEST(MoveOrdering, MainSearchBands) {
    struct Case {
        const char* fen;
        const char* move;
        int expected;
        const char* why;
    };
    const Case cases[] = {
        {"4k3/8/8/3q4/4P3/8/8/4K3 w - - 0 1", "e4d5", 50875, "by value, without SEE (975)"},
        {"4k3/8/8/3n4/8/8/8/3RK3 w - - 0 1", "d1d5", 50325, "wins by exchange"},
        {"4k3/8/2p5/3n4/8/2N5/8/4K3 w - - 0 1", "c3d5", 40000, "even exchange"},
        {"4k3/8/4p3/3p4/8/8/8/3QK3 w - - 0 1", "d1d5", 125, "losing capture: 1000 + SEE"},
        {"8/4P3/8/8/8/8/k7/4K3 w - - 0 1", "e7e8q", 50875, "queen promotion"},
        {"8/4P3/8/8/8/8/k7/4K3 w - - 0 1", "e7e8n", 1001, "under-promotion is quiet"},
    };
    for (const Case& c : cases) {
        auto board   = boardFrom(c.fen);
        const Move m = findMove(*board, c.move);
        EXPECT_EQ(mainScore(*board, m, NO_MOVE, 2), c.expected) << c.why << " in " << c.fen;
    }
}

TEST(MoveOrdering, HashMoveKillersAndHistory) {
    auto board        = boardFrom(START_FEN);
    const Move knight = findMove(*board, "g1f3");
    const Move pawn   = findMove(*board, "e2e4");
    EXPECT_EQ(mainScore(*board, knight, knight, 2), 100000);
    EXPECT_EQ(quiescenceScore(*board, knight, knight), -1);

    board->historyTable[WHITE][6][21] = 77;
    EXPECT_EQ(mainScore(*board, knight, NO_MOVE, 2), 1078);
    board->killerMove1[2] = knight;
    board->killerMove2[2] = pawn;
    EXPECT_EQ(mainScore(*board, knight, NO_MOVE, 2), 46000);
    EXPECT_EQ(mainScore(*board, pawn, NO_MOVE, 2), 45000);
    board->mateKiller[2] = knight;
    EXPECT_EQ(mainScore(*board, knight, NO_MOVE, 2), 90000);
    EXPECT_EQ(mainScore(*board, knight, knight, 2), 100000);

    // Killers of two plies back count from ply 2 on; below that history decides.
    board->killerMove1[0] = knight;
    board->killerMove2[0] = pawn;
    EXPECT_EQ(mainScore(*board, knight, NO_MOVE, 2), 90000); // still the mate killer
    board->mateKiller[2] = board->killerMove1[2] = board->killerMove2[2] = NO_MOVE;
    EXPECT_EQ(mainScore(*board, knight, NO_MOVE, 2), 36000);
    EXPECT_EQ(mainScore(*board, pawn, NO_MOVE, 2), 35000);
    EXPECT_EQ(mainScore(*board, knight, NO_MOVE, 1), 1078);
    EXPECT_EQ(mainScore(*board, pawn, NO_MOVE, 1), 1001);
    EXPECT_EQ(mainScore(*board, knight, NO_MOVE, 0), 46000); // ply 0's own killer
}

TEST(MoveOrdering, QuiescenceKeepsOnlyWinningAndEvenCaptures) {
    struct Case {
        const char* fen;
        const char* move;
        bool isHashMove;
        int expected;
    };
    const Case cases[] = {
        {"4k3/8/8/3q4/4P3/8/8/4K3 w - - 0 1", "e4d5", false, 50875},
        {"4k3/8/8/3q4/4P3/8/8/4K3 w - - 0 1", "e4d5", true, 150875},
        {"4k3/8/2p5/3n4/8/2N5/8/4K3 w - - 0 1", "c3d5", false, 50000},
        {"4k3/8/4p3/3p4/8/8/8/3QK3 w - - 0 1", "d1d5", false, -1},
        {"4k3/8/4p3/3p4/8/8/8/3QK3 w - - 0 1", "d1d5", true, -1},
        {"8/4P3/8/8/8/8/k7/4K3 w - - 0 1", "e7e8q", false, 50875},
        {"8/4P3/8/8/8/8/k7/4K3 w - - 0 1", "e7e8r", false, -1},
    };
    for (const Case& c : cases) {
        auto board   = boardFrom(c.fen);
        const Move m = findMove(*board, c.move);
        EXPECT_EQ(quiescenceScore(*board, m, c.isHashMove ? m : NO_MOVE), c.expected)
            << c.move << (c.isHashMove ? " (hash move)" : "") << " in " << c.fen;
    }
}
