// FEN: the engine's own acceptance rules, what an accepted FEN sets, a rejected one leaving
// the board alone, and the writer read back. (The mirrored writer is checked by the
// evaluation's symmetry test, which reads every position it writes.)
#include "test_support.h"

#include <gtest/gtest.h>

TEST(Fen, AcceptsAndRejectsByTheEngineRulesAndARejectionChangesNothing) {
    const std::string start                    = "rnbqkbnr/pppppppp/8/8/8/8/PPPPPPPP/RNBQKBNR";
    const std::pair<std::string, bool> cases[] = {
        {start + " w KQkq -", false}, // no blank after the e.p. field
        {start + " w KQkq - ", true}, // the counters are optional
        {start + " w KQkx - 0 1", false},
        {start + " w qkQK-q - 0 1", true},
        {start + " w KQkq e 0 1", true},            // a file letter alone
        {start + " w KQkq - 0 1 moves e2e4", true}, // what follows is the caller's
        {"rnbqkbnr/pppppppp/7/8/8/8/PPPPPPPP/RNBQKBNR w KQkq - 0 1", false},
        {"rnbqkbnr/pppppppp/p7/8/8/8/PPPPPPPP/RNBQKBNR w KQkq - 0 1", false}, // nine black pawns
        {"rnbqkbnr/pppppppp/8/8/8/P7/PPPPPPPP/RNBQKBNR w KQkq - 0 1", true},  // nine white ones
        {"4k3/8/8/8/8/Q7/Q7/QQQQQQQQ w - - 0 1", false},                      // ten queens
        {"4k2k/8/8/8/8/8/8/4K3 w - - 0 1", false},                            // two black kings
    };
    auto board              = boardFrom(KIWIPETE_FEN);
    const Position kiwipete = *board;
    for (const auto& [fen, accepted] : cases) {
        ASSERT_EQ(board->setPosition(KIWIPETE_FEN), 1);
        EXPECT_EQ(board->setPosition(fen.c_str()), accepted ? 1 : 0) << '"' << fen << '"';
        EXPECT_TRUE(accepted || samePosition(*board, kiwipete)) << fen;
    }
}

TEST(Fen, FieldsEndUpOnTheBoard) {
    auto board = boardFrom("4k3/8/8/8/8/8/8/4K3 b Kq e 300 1");
    EXPECT_EQ(board->epFile, 5);
    EXPECT_EQ(board->fiftyCounter, 300 & 255);
    EXPECT_EQ(board->castleRights, 1 | 8); // taken as written, whatever the pieces say
    EXPECT_EQ(board->hashKey, board->computeKey());
    EXPECT_EQ(boardFrom("4k3/8/8/8/8/8/8/4K3 w - - 7x 1")->fiftyCounter, 0); // ended by the x
    board = boardFrom("4k3/8/8/8/8/8/4r3/4K3 w - - 0 1");
    EXPECT_EQ(board->inCheck, 1);
    EXPECT_EQ(board->rootMoveCount, 5); // the evasions, legal or not
    board->newGame();
    EXPECT_TRUE(samePosition(*board, *boardFrom(START_FEN)));
}

TEST(Fen, WrittenPositionsReadBack) {
    for (const PerftCase& c : loadPerftSuite("tricky.perft")) {
        auto board = boardFrom(c.fen);
        char text[128];
        board->toFen(text);
        EXPECT_TRUE(samePosition(*board, *boardFrom(text))) << c.fen << " wrote " << text;
    }
}
