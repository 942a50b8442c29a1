// Moves written as text and read back, and the readers' deliberate habits.
#include "test_support.h"

#include <gtest/gtest.h>

TEST(MoveText, LongAlgebraic) {
    const std::pair<Move, const char*> cases[] = {
        {withCheckMark(makeMoveWord(28, 35, QUEEN, PAWN), 2), "Qe4xd5 #"},
        {makeMoveWord(36, 43, PAWN, PAWN) | MOVE_EP, "e5xd6 e.p"},
        {makeMoveWord(52, 60, PAWN, EMPTY, KNIGHT), "e7-e8=N"},
        {BLACK_LONG_CASTLE, "O-O-O"},
    };
    for (const auto& [move, expected] : cases) {
        char text[32];
        ChessBoard::moveToLongText(move, text);
        EXPECT_STREQ(text, expected);
    }
}

// Every legal move of many positions, written in SAN and read back, names the same move: the
// writer disambiguates wherever the reader's first match would be another piece.
TEST(MoveText, SanRoundTrips) {
    std::vector<std::string> fens = {KIWIPETE_FEN, "4k3/8/8/8/8/1N6/8/1N2K3 w - - 0 1",
                                     "3k4/8/8/8/8/8/4K3/R6R w - - 0 1"};
    for (const PerftCase& c : loadPerftSuite("tricky.perft"))
        fens.push_back(c.fen);
    const std::vector<PerftCase> randomSuite = loadPerftSuite("random.perft");
    for (std::size_t i = 0; i < randomSuite.size(); i += 23)
        fens.push_back(randomSuite[i].fen);
    for (const std::string& fen : fens) {
        auto board = boardFrom(fen);
        MoveEntry list[MAX_GENERATED];
        const int count = board->generatePseudoLegalMoves(list);
        for (Move m : legalMoves(*board)) {
            char text[32];
            ChessBoard::moveToSan(m, text, list, count);
            Move read;
            ASSERT_EQ(board->sanToMove(text, read), 1) << fen << " " << text;
            EXPECT_TRUE(moveFrom(read) == moveFrom(m) && moveTo(read) == moveTo(m) &&
                        movePromotion(read) == movePromotion(m))
                << fen << " " << text;
        }
    }
}

// The SAN reader never sets the en-passant bit, reads a promotion only after "=", and takes
// castling text without a look at the board.
TEST(MoveText, SanReaderHabits) {
    Move m;
    ASSERT_EQ(boardFrom("4k3/8/8/3pP3/8/8/8/4K3 w - d6 0 1")->sanToMove("exd6", m), 1);
    EXPECT_EQ(m, makeMoveWord(36, 43, PAWN));
    auto board = boardFrom("4k3/P7/8/8/8/8/8/4K3 w - - 0 1");
    ASSERT_EQ(board->sanToMove("a8=N+", m), 1);
    EXPECT_EQ(movePromotion(m), KNIGHT);
    ASSERT_EQ(board->sanToMove("a8", m), 1);
    EXPECT_EQ(movePromotion(m), EMPTY);
    ASSERT_EQ(board->sanToMove("O-O", m), 1);
    EXPECT_EQ(m, WHITE_SHORT_CASTLE);
    for (const char* text : {"a8=K", "Zb3", "N", "", "Ke9"})
        EXPECT_EQ(board->sanToMove(text, m), 0) << text;
}

// The coordinate reader plays only a legal move; without a letter a promotion is the first
// generated one, the queen; promotion letters are lower case.
TEST(MoveText, CoordinateReaderPlaysOnlyLegalMoves) {
    const struct {
        const char* fen;
        const char* text;
        int played;
        Square square;
        Piece piece;
    } cases[] = {
        {START_FEN, "e2e4", 1, 28, PAWN},
        {START_FEN, "e2e5", 0, 12, PAWN},
        {START_FEN, "e2e4x", 0, 12, PAWN},
        {"4k3/P7/8/8/8/8/8/4K3 w - - 0 1", "a7a8n", 1, 56, KNIGHT},
        {"4k3/P7/8/8/8/8/8/4K3 w - - 0 1", "a7a8", 1, 56, QUEEN},
        {"4k3/P7/8/8/8/8/8/4K3 w - - 0 1", "a7a8Q", 0, 48, PAWN},
        {"4k3/8/8/8/8/8/4R3/4K2r w - - 0 1", "e2d2", 0, 12, ROOK}, // the king stays attacked
    };
    for (const auto& c : cases) {
        auto board = boardFrom(c.fen);
        EXPECT_EQ(board->playCoordinateMove(c.text), c.played) << c.text;
        EXPECT_EQ(board->gameMoveCount, c.played) << c.text;
        EXPECT_EQ(board->pieceArray[c.square], c.piece) << c.text;
    }
}
