// The engine's side of the book: opening a file, and playing only book moves that are legal
// moves of the position, as the generator makes them.
#include "book/opening_book.h"
#include "book_test_files.h"
#include "test_support.h"

#include <gtest/gtest.h>

namespace {

// A book in which the position's node lies between two others, where the lookup reaches it.
void bookWith(ChessBoard& board, std::initializer_list<Move> moves) {
    const std::uint64_t key = board.hashKey;
    board.openingBook().clear();
    board.openingBook().insertBookMove(0, 0, 1, 1, 0, 0);
    for (Move m : moves)
        board.openingBook().insertBookMove(std::uint32_t(key), std::uint32_t(key >> 32), m, 1, 0,
                                           0);
    board.openingBook().insertBookMove(~0u, ~0u, 1, 1, 0, 0);
}

Square sq(const char* text) {
    return squareAt(text[0] - 'a', text[1] - '1');
}

} // namespace

TEST(BookProbe, PlaysLegalMovesWithTheGeneratorsFlagsOnly) {
    struct Case {
        const char* fen;
        Move stored;
        bool played;
        Move flags = 0; // what the move played must carry that the stored word lacks
    };
    const Case cases[] = {
        {START_FEN, makeMoveWord(sq("e2"), sq("e4"), PAWN), true, MOVE_DOUBLE},
        {"r3k2r/8/8/8/8/8/8/R3K2R w KQkq - 0 1", WHITE_SHORT_CASTLE, true, MOVE_CASTLE},
        {"4k3/8/8/3pP3/8/8/8/4K3 w - d6 0 1", makeMoveWord(sq("e5"), sq("d6"), PAWN), true,
         MOVE_EP},
        // A pinned knight, a move of a piece that is not there, a square no piece reaches.
        {"4k3/8/8/6N1/1b6/2N5/8/4K3 w - - 0 1", makeMoveWord(sq("c3"), sq("e4"), KNIGHT), false},
        {START_FEN, makeMoveWord(sq("e2"), sq("e4"), KNIGHT), false},
        {START_FEN, makeMoveWord(sq("a1"), sq("a5"), ROOK), false},
        // Castling without the right, and promotion words that differ from the board's.
        {"r3k2r/8/8/8/8/8/8/R3K2R w Qkq - 0 1", WHITE_SHORT_CASTLE, false},
        {"4k3/P7/8/8/8/8/8/4K3 w - - 0 1", makeMoveWord(sq("a7"), sq("a8"), PAWN), false},
        {"4k3/P7/8/8/8/8/8/4K3 w - - 0 1", makeMoveWord(sq("a7"), sq("a8"), PAWN, EMPTY, KING),
         false},
    };
    for (const Case& c : cases) {
        auto board            = boardFrom(c.fen);
        const Position before = *board;
        bookWith(*board, {c.stored});
        const Move played = board->probeBook();
        EXPECT_TRUE(samePosition(*board, before)) << c.fen;
        if (!c.played) {
            EXPECT_EQ(played, NO_MOVE) << c.fen;
            continue;
        }
        const std::vector<Move> legal = legalMoves(*board);
        EXPECT_NE(std::find(legal.begin(), legal.end(), played), legal.end()) << c.fen;
        EXPECT_EQ(moveFrom(played), moveFrom(c.stored)) << c.fen;
        EXPECT_EQ(moveTo(played), moveTo(c.stored)) << c.fen;
        EXPECT_EQ(played & c.flags, c.flags) << c.fen;
    }
}

TEST(BookProbe, OpenBookSortsAnUnsortedFileAndTurnsTheBookOn) {
    auto board              = boardFrom(START_FEN);
    const std::uint64_t key = board->hashKey;
    const Move e2e4         = makeMoveWord(sq("e2"), sq("e4"), PAWN);
    ScratchDir dir;
    writeFile(dir.path("book.bin"), bookImage({{~std::uint64_t{0}, {{1, 1, 0, 0}}},
                                               {key, {{e2e4, 5, 40, 30}}},
                                               {key ^ 1, {{2, 1, 0, 0}}},
                                               {0, {{3, 1, 0, 0}}}}));
    writeFile(dir.path("bad.bin"), {'K', 'O', 'O', 'B', 1, 0, 1, 0, 0, 0, 0, 0});

    EXPECT_FALSE(board->openBook(dir.path("missing.bin").c_str()));
    EXPECT_FALSE(board->openBook(dir.path("bad.bin").c_str()));
    EXPECT_FALSE(board->bookEnabled);
    ASSERT_TRUE(board->openBook(dir.path("book.bin").c_str()));
    EXPECT_TRUE(board->bookEnabled);
    EXPECT_TRUE(board->openingBook().isSortedByKey());
    EXPECT_EQ(board->probeBook(), e2e4 | MOVE_DOUBLE);
    board->playGameMove(e2e4 | MOVE_DOUBLE);
    EXPECT_EQ(board->probeBook(), NO_MOVE);
}

// The book the build makes: its keys are the engine's, so games played from it stay in book
// for many moves, and every move it gives is legal.
TEST(BookProbe, TheBuiltBookLeadsGamesThroughTheOpening) {
    auto board = boardFrom(START_FEN);
    ASSERT_TRUE(board->openBook(PELLIX_OPENING_BOOK));
    std::srand(2024);
    int plies           = 0;
    constexpr int GAMES = 50;
    for (int game = 0; game < GAMES; ++game) {
        board->newGame();
        for (Move m; board->gameMoveCount < 20 && (m = board->probeBook()) != NO_MOVE; ++plies) {
            const std::vector<Move> legal = legalMoves(*board);
            ASSERT_NE(std::find(legal.begin(), legal.end(), m), legal.end());
            ASSERT_TRUE(board->playGameMove(m));
        }
        EXPECT_GE(board->gameMoveCount, 4) << "game " << game;
    }
    EXPECT_GE(plies, GAMES * 15) << plies;
}
