// What each of the three generators produces, and in which order.
#include "test_support.h"

#include <gtest/gtest.h>

namespace {

std::vector<Move> generated(ChessBoard& board, int (ChessBoard::*generator)(MoveEntry*) const) {
    MoveEntry list[MAX_GENERATED];
    const int count = (board.*generator)(list);
    std::vector<Move> moves;
    for (int i = 0; i < count; ++i)
        moves.push_back(list[i].move);
    return moves;
}

} // namespace

TEST(Generate, PromotionsComeAsFourQueenFirst) {
    // A push, two captures and, in check, a block and a capture of the checker.
    auto board                       = boardFrom("1n1n1k2/2P5/8/8/8/8/8/4K3 w - - 0 1");
    const std::vector<Move> captures = generated(*board, &ChessBoard::generateCaptures);
    ASSERT_EQ(captures.size(), 12u);
    for (std::size_t i = 0; i < captures.size(); i += 4) {
        EXPECT_EQ(movePromotion(captures[i]), QUEEN);
        EXPECT_EQ(movePromotion(captures[i + 1]), ROOK);
        EXPECT_EQ(movePromotion(captures[i + 2]), KNIGHT);
        EXPECT_EQ(movePromotion(captures[i + 3]), BISHOP);
        EXPECT_EQ(moveTo(captures[i]), moveTo(captures[i + 3]));
    }
    EXPECT_EQ(moveCaptured(captures[0]), EMPTY); // the push comes before the captures
    EXPECT_EQ(moveCaptured(captures[4]), KNIGHT);
    for (Move m : generated(*board, &ChessBoard::generateQuiets))
        EXPECT_EQ(movePromotion(m), EMPTY);

    // In check along the eighth rank, the pawn blocks on b8 in four ways.
    board = boardFrom("K5r1/1P6/8/8/8/8/8/6k1 w - - 0 1");
    std::vector<Piece> promotions;
    for (Move m : generated(*board, &ChessBoard::generateEvasions))
        if (movePromotion(m))
            promotions.push_back(movePromotion(m));
    EXPECT_EQ(promotions, (std::vector<Piece>{QUEEN, ROOK, KNIGHT, BISHOP}));
}

TEST(Generate, EnPassantOnlyFromCapturesAndEvasions) {
    auto board   = boardFrom("4k3/8/8/2PpP3/8/8/8/4K3 w - d6 0 1");
    int passants = 0;
    for (Move m : generated(*board, &ChessBoard::generateCaptures))
        passants += isEnPassant(m);
    EXPECT_EQ(passants, 2);
    for (Move m : generated(*board, &ChessBoard::generateQuiets))
        EXPECT_FALSE(isEnPassant(m));
    // The pawn that just stepped twice gives check: taking it en passant is an evasion.
    board = boardFrom("8/8/8/2k5/3Pp3/8/8/4K3 b - d3 0 1");
    ASSERT_EQ(board->sideToMoveInCheck(), true);
    passants = 0;
    for (Move m : generated(*board, &ChessBoard::generateEvasions))
        passants += isEnPassant(m);
    EXPECT_EQ(passants, 1);
    // A FEN's e.p. file with no pawn to take is not believed.
    board = boardFrom("4k3/8/8/2P5/8/8/8/4K3 w - d6 0 1");
    for (Move m : generated(*board, &ChessBoard::generateCaptures))
        EXPECT_FALSE(isEnPassant(m));
}

TEST(Generate, DoubleCheckAllowsOnlyKingMoves) {
    auto board = boardFrom("4k3/8/8/8/8/5n2/8/R3K2r w - - 0 1");
    ASSERT_TRUE(board->sideToMoveInCheck());
    for (Move m : generated(*board, &ChessBoard::generateEvasions))
        EXPECT_EQ(movePiece(m), KING);
}

TEST(Generate, CastlingNeverThroughIntoOrOutOfCheck) {
    struct Case {
        const char* fen;
        int castles;
    };
    const Case cases[] = {
        {"r3k2r/8/8/8/8/8/8/R3K2R w KQkq - 0 1", 2},   {"r3k2r/8/8/8/8/8/8/R3K2R w - - 0 1", 0},
        {"r3k2r/8/8/8/8/8/5r2/R3K2R w KQkq - 0 1", 1}, // f1 crossed under attack
        {"r3k2r/8/8/8/8/8/6r1/R3K2R w KQkq - 0 1", 1}, // g1, the landing square
        {"r3k2r/8/8/8/8/8/1r6/R3K2R w KQkq - 0 1", 2}, // b1 may be attacked
        {"r3k2r/8/8/8/8/8/8/RN2K1NR w KQkq - 0 1", 0}, // blocked both ways
        {"r3k2r/8/8/8/8/8/8/4K3 w KQkq - 0 1", 0},     // rights without rooks
        {"r3k2r/8/8/8/8/8/8/R4K1R w KQkq - 0 1", 0},   // rights without the king at home
    };
    for (const Case& c : cases) {
        auto board  = boardFrom(c.fen);
        int castles = 0;
        for (Move m : generated(*board, &ChessBoard::generateQuiets))
            castles += isCastle(m);
        EXPECT_EQ(castles, c.castles) << c.fen;
    }
    auto board = boardFrom("r3k2r/8/8/8/8/8/4r3/R3K2R w KQkq - 0 1");
    ASSERT_TRUE(board->sideToMoveInCheck());
    for (Move m : generated(*board, &ChessBoard::generateEvasions))
        EXPECT_FALSE(isCastle(m));
}

TEST(Generate, PiecesInOrderLowestSquareFirst) {
    auto board                     = boardFrom(START_FEN);
    const std::vector<Move> quiets = generated(*board, &ChessBoard::generateQuiets);
    ASSERT_EQ(quiets.size(), 20u);
    EXPECT_EQ(quiets[0], makeMoveWord(1, 16, KNIGHT));
    EXPECT_EQ(quiets[3], makeMoveWord(6, 23, KNIGHT));
    EXPECT_EQ(quiets[4], makeMoveWord(8, 16, PAWN));
    EXPECT_EQ(quiets[12], makeMoveWord(8, 24, PAWN) | MOVE_DOUBLE);
}
