// Positions and moves as text. FEN: the engine's own acceptance rules, what an accepted FEN
// sets, a rejected one leaving the board alone, and the writer read back (the mirrored writer
// is checked by the evaluation's symmetry test, which reads every position it writes). Moves:
// SAN read back, and the coordinate reader's deliberate habits (the long text is checked
// through the -divide command line).
#include "test_support.h"

#include <gtest/gtest.h>
#include <tuple>

TEST(Fen, AcceptsAndRejectsByTheEngineRulesAndARejectionChangesNothing) {
    const std::string start = "rnbqkbnr/pppppppp/8/8/8/8/PPPPPPPP/RNBQKBNR";
    // clang-format off
    const std::pair<std::string, bool> cases[] = {
        {start + " w KQkq -", false},               // no blank after the e.p. field
        {start + " w KQkq - ", true},               // the counters are optional
        {start + " w KQkx - 0 1", false},           {start + " w qkQK-q - 0 1", true},
        {start + " w KQkq e 0 1", true},            // a file letter alone
        {start + " w KQkq - 0 1 moves e2e4", true}, // what follows is the caller's
        {"rnbqkbnr/pppppppp/7/8/8/8/PPPPPPPP/RNBQKBNR w KQkq - 0 1", false},
        {"rnbqkbnr/pppppppp/p7/8/8/8/PPPPPPPP/RNBQKBNR w KQkq - 0 1", false}, // nine black pawns
        {"rnbqkbnr/pppppppp/8/8/8/P7/PPPPPPPP/RNBQKBNR w KQkq - 0 1", true},  // nine white ones
        {"4k3/8/8/8/8/Q7/Q7/QQQQQQQQ w - - 0 1", false},                      // ten queens
        {"4k2k/8/8/8/8/8/8/4K3 w - - 0 1", false},                            // two black kings
    };
    // clang-format on
    auto board              = boardFrom(KIWIPETE_FEN);
    const Position kiwipete = *board;
    for (const auto& [fen, accepted] : cases) {
        ASSERT_EQ(board->setPosition(KIWIPETE_FEN), 1);
        EXPECT_EQ(board->setPosition(fen.c_str()), accepted ? 1 : 0) << '"' << fen << '"';
        EXPECT_TRUE(accepted || samePosition(*board, kiwipete)) << fen;
    }
}

TEST(Fen, FieldsEndUpOnTheBoardAndWrittenPositionsReadBack) {
    auto board = boardFrom("4k3/8/8/8/8/8/8/4K3 b Kq e 300 1");
    EXPECT_EQ(board->epFile, 5);
    EXPECT_EQ(board->fiftyCounter, 300 & 255);
    EXPECT_EQ(board->castleRights, 1 | 8); // taken as written, whatever the pieces say
    EXPECT_EQ(board->hashKey, board->computeKey());
    EXPECT_EQ(boardFrom("4k3/8/8/8/8/8/8/4K3 w - - 7x 1")->fiftyCounter, 0); // ended by the x
    // An en-passant file with no pawn behind its target square is kept, and gives no capture.
    MoveEntry list[MAX_GENERATED];
    EXPECT_EQ(boardFrom("4k3/8/8/2P5/8/8/8/4K3 w - d6 0 1")->generateCaptures(list), 0);
    for (const PerftCase& c : loadPerftSuite("tricky.perft")) {
        char text[128];
        boardFrom(c.fen)->toFen(text);
        EXPECT_TRUE(samePosition(*boardFrom(c.fen), *boardFrom(text))) << c.fen << " as " << text;
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
    // clang-format off
    const std::tuple<const char*, const char*, Square, Piece> cases[] = {
        {START_FEN, "e2e4", 28, PAWN},   {START_FEN, "e2e5", 36, EMPTY},
        {START_FEN, "e2e4x", 28, EMPTY}, {pawn, "a7a8n", 56, KNIGHT},
        {pawn, "a7a8", 56, QUEEN},       {pawn, "a7a8Q", 56, EMPTY},
        {"4k3/8/8/8/8/8/4R3/4K2r w - - 0 1", "e2d2", 11, EMPTY}, // the king stays attacked
    };
    // clang-format on
    for (const auto& [fen, text, to, arrives] : cases) {
        auto board            = boardFrom(fen);
        const Position before = *board;
        EXPECT_EQ(board->playCoordinateMove(text), arrives != EMPTY) << text;
        EXPECT_EQ(board->pieceArray[to], arrives) << text;
        EXPECT_EQ(board->takeBackGameMove(), arrives != EMPTY) << text;
        EXPECT_TRUE(samePosition(*board, before)) << text;
    }
}
