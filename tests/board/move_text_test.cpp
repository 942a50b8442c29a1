// Moves written as text and read back, and the readers' deliberate habits.
#include "test_support.h"

#include <gtest/gtest.h>
#include <tuple>

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
// writer disambiguates wherever the reader's first match would be another piece. (The
// reader's habits show through its one caller, the book builder's game-move reader.)
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

// The coordinate reader plays only a legal move, which the game record takes back; without a
// letter a promotion is the first generated one, the queen; promotion letters are lower case.
// Each case names the piece that arrives on the target square, EMPTY for a refused move.
TEST(MoveText, CoordinateReaderPlaysOnlyLegalMoves) {
    const char* const pawn = "4k3/P7/8/8/8/8/8/4K3 w - - 0 1";
    const std::tuple<const char*, const char*, Square, Piece> cases[] = {
        {START_FEN, "e2e4", 28, PAWN},
        {START_FEN, "e2e5", 36, EMPTY},
        {START_FEN, "e2e4x", 28, EMPTY},
        {pawn, "a7a8n", 56, KNIGHT},
        {pawn, "a7a8", 56, QUEEN},
        {pawn, "a7a8Q", 56, EMPTY},
        {"4k3/8/8/8/8/8/4R3/4K2r w - - 0 1", "e2d2", 11, EMPTY}, // the king stays attacked
    };
    for (const auto& [fen, text, to, arrives] : cases) {
        auto board            = boardFrom(fen);
        const Position before = *board;
        EXPECT_EQ(board->playCoordinateMove(text), arrives != EMPTY) << text;
        EXPECT_EQ(board->pieceArray[to], arrives) << text;
        EXPECT_EQ(board->takeBackGameMove(), arrives != EMPTY) << text;
        EXPECT_TRUE(samePosition(*board, before)) << text;
    }
}
