// Moves written as text and read back, and the readers' deliberate habits.
#include "test_support.h"

#include <gtest/gtest.h>
#include <random>

namespace {

std::string longText(Move m) {
    char text[32];
    ChessBoard::moveToLongText(m, text);
    return text;
}

std::string san(ChessBoard& board, Move m) {
    MoveEntry list[MAX_GENERATED];
    const int count = board.generateMoves(list, board.sideToMoveInCheck());
    char text[32];
    ChessBoard::moveToSan(m, text, list, count);
    return text;
}

} // namespace

TEST(MoveText, LongAlgebraic) {
    EXPECT_EQ(longText(NO_MOVE), "empty");
    EXPECT_EQ(longText(makeMoveWord(6, 21, KNIGHT)), "Ng1-f3");
    EXPECT_EQ(longText(withCheckMark(makeMoveWord(28, 35, PAWN, PAWN), 1)), "e4xd5 +");
    EXPECT_EQ(longText(withCheckMark(makeMoveWord(28, 35, QUEEN, PAWN), 2)), "Qe4xd5 #");
    EXPECT_EQ(longText(makeMoveWord(36, 43, PAWN, PAWN) | MOVE_EP), "e5xd6 e.p");
    EXPECT_EQ(longText(makeMoveWord(52, 60, PAWN, EMPTY, KNIGHT)), "e7-e8=N");
    EXPECT_EQ(longText(WHITE_SHORT_CASTLE), "O-O");
    EXPECT_EQ(longText(BLACK_LONG_CASTLE), "O-O-O");
}

TEST(MoveText, SanDisambiguates) {
    auto board = boardFrom("4k3/8/8/8/8/8/8/1N2KN2 w - - 0 1");
    EXPECT_EQ(san(*board, makeMoveWord(1, 11, KNIGHT)), "Nbd2");
    board = boardFrom("4k3/8/8/8/8/1N6/8/1N2K3 w - - 0 1");
    EXPECT_EQ(san(*board, makeMoveWord(1, 11, KNIGHT)), "N1d2");
    board = boardFrom("3k4/8/8/8/8/8/4K3/R6R w - - 0 1");
    EXPECT_EQ(san(*board, makeMoveWord(0, 3, ROOK)), "Rad1");
    board = boardFrom("4k3/8/8/3p4/4P3/8/8/4K3 w - - 0 1");
    EXPECT_EQ(san(*board, makeMoveWord(28, 35, PAWN, PAWN)), "exd5");
    EXPECT_EQ(san(*board, WHITE_LONG_CASTLE), "O-O-O");
}

// Every legal move of many positions, written in SAN and read back, names the same move.
TEST(MoveText, SanRoundTrips) {
    std::vector<std::string> fens = {START_FEN, KIWIPETE_FEN};
    for (const PerftCase& c : loadPerftSuite("tricky.perft"))
        fens.push_back(c.fen);
    const std::vector<PerftCase> randomSuite = loadPerftSuite("random.perft");
    for (std::size_t i = 0; i < randomSuite.size(); i += 23)
        fens.push_back(randomSuite[i].fen);
    for (const std::string& fen : fens) {
        auto board = boardFrom(fen);
        for (Move m : legalMoves(*board)) {
            const std::string text = san(*board, m);
            Move read;
            ASSERT_EQ(board->sanToMove(text.c_str(), read), 1) << fen << " " << text;
            if (isCastle(m)) {
                EXPECT_EQ(read, m) << text;
                continue;
            }
            EXPECT_EQ(moveFrom(read), moveFrom(m)) << fen << " " << text;
            EXPECT_EQ(moveTo(read), moveTo(m)) << fen << " " << text;
            EXPECT_EQ(movePromotion(read), movePromotion(m)) << fen << " " << text;
            EXPECT_EQ(isEnPassant(read), false) << "the reader never sets the e.p. bit";
        }
    }
}

TEST(MoveText, SanReaderHabits) {
    auto board = boardFrom("4k3/8/8/3pP3/8/8/8/4K3 w - d6 0 1");
    Move m;
    // En passant comes back without its bit and with nothing captured on the target.
    ASSERT_EQ(board->sanToMove("exd6", m), 1);
    EXPECT_EQ(m, makeMoveWord(36, 43, PAWN));
    board = boardFrom("4k3/P7/8/8/8/8/8/4K3 w - - 0 1");
    ASSERT_EQ(board->sanToMove("a8=N+", m), 1);
    EXPECT_EQ(movePromotion(m), KNIGHT);
    ASSERT_EQ(board->sanToMove("a8", m), 1); // without "=" no promotion is read
    EXPECT_EQ(movePromotion(m), EMPTY);
    EXPECT_EQ(board->sanToMove("a8=K", m), 0);
    EXPECT_EQ(board->sanToMove("Zb3", m), 0);
    EXPECT_EQ(board->sanToMove("N", m), 0);
    EXPECT_EQ(board->sanToMove("", m), 0);
    EXPECT_EQ(board->sanToMove("Ke9", m), 0);
    board = boardFrom(START_FEN);
    ASSERT_EQ(board->sanToMove("e4", m), 1);
    EXPECT_TRUE(isDoubleStep(m));
    ASSERT_EQ(board->sanToMove("O-O", m), 1);
    EXPECT_EQ(m, WHITE_SHORT_CASTLE); // castling text is taken without a look at the board
}

TEST(MoveText, CoordinateReader) {
    auto board = boardFrom(START_FEN);
    EXPECT_EQ(board->playCoordinateMove("e2e5"), 0);
    EXPECT_EQ(board->playCoordinateMove("e2e4x"), 0);
    EXPECT_EQ(board->playCoordinateMove("e2e4qq"), 0);
    EXPECT_EQ(board->playCoordinateMove("e2"), 0);
    EXPECT_EQ(board->playCoordinateMove("i2i4"), 0);
    EXPECT_EQ(board->gameMoveCount, 0);
    EXPECT_EQ(board->playCoordinateMove("e2e4"), 1);
    EXPECT_EQ(board->lastMove, makeMoveWord(12, 28, PAWN) | MOVE_DOUBLE);

    board = boardFrom("4k3/P7/8/8/8/8/8/4K3 w - - 0 1");
    EXPECT_EQ(board->playCoordinateMove("a7a8n"), 1);
    EXPECT_EQ(board->pieceArray[56], KNIGHT);
    board = boardFrom("4k3/P7/8/8/8/8/8/4K3 w - - 0 1");
    EXPECT_EQ(board->playCoordinateMove("a7a8"), 1); // the first generated promotion: queen
    EXPECT_EQ(board->pieceArray[56], QUEEN);
    board = boardFrom("4k3/P7/8/8/8/8/8/4K3 w - - 0 1");
    EXPECT_EQ(board->playCoordinateMove("a7a8Q"), 0); // promotion letters are lower case

    // A move that leaves the king attacked is refused and the board is unchanged.
    board              = boardFrom("4k3/8/8/8/8/8/4R3/4K2r w - - 0 1");
    const Position was = *board;
    EXPECT_EQ(board->playCoordinateMove("e2d2"), 0);
    EXPECT_TRUE(samePosition(*board, was));
}

TEST(MoveText, ReadersSurviveAnyText) {
    auto board                 = boardFrom(KIWIPETE_FEN);
    const Position was         = *board;
    const std::string alphabet = "abcdefghi0123456789xX=+#-OKQRBNPqrbnp \t";
    std::mt19937 random(5);
    for (int trial = 0; trial < 20000; ++trial) {
        std::string text;
        for (int i = int(random() % 12); i > 0; --i)
            text += alphabet[random() % alphabet.size()];
        Move m;
        board->sanToMove(text.c_str(), m);
        if (board->playCoordinateMove(text.c_str())) {
            ASSERT_EQ(board->takeBackGameMove(), 1);
        }
        ASSERT_TRUE(samePosition(*board, was)) << text;
    }
}
