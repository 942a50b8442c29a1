// The engine's side of the book: the lookup with its kept rule, which never examines the ends
// of a book of three or more nodes, the choice in proportion to the game counts, and the
// built book's moves played as the legal moves they stand for.
#include "book/opening_book.h"
#include "test_support.h"

#include <algorithm>
#include <cstdlib>
#include <gtest/gtest.h>

namespace {

// Keys 100, 200, ... with the high word set too, so that both halves take part.
std::uint64_t keyOf(int index) {
    return 0x00000100'00000000 + 100 * std::uint64_t(index + 1);
}

void insert(OpeningBook& book, std::uint64_t key, Move move, std::uint32_t count = 1) {
    book.insertBookMove(std::uint32_t(key), std::uint32_t(key >> 32), move, count, 0, 0);
}

Move choose(const OpeningBook& book, std::uint64_t key) {
    return chooseBookMove(book, std::uint32_t(key), std::uint32_t(key >> 32));
}

} // namespace

TEST(BookLookup, FindsEveryInnerNodeAndTheEndsOnlyAsMidpoints) {
    EXPECT_EQ(choose(OpeningBook{}, keyOf(0)), NO_MOVE);
    for (int size = 1; size <= 40; ++size) {
        OpeningBook book;
        for (int i = 0; i < size; ++i)
            insert(book, keyOf(i), Move(i + 1));
        for (int i = 0; i < size; ++i) {
            // An end is a midpoint only in books of one node, and of two for the first.
            const bool reachable = (i > 0 && i < size - 1) || size == 1 || (size == 2 && i == 0);
            EXPECT_EQ(choose(book, keyOf(i)), reachable ? Move(i + 1) : NO_MOVE)
                << i << "/" << size;
            EXPECT_EQ(choose(book, keyOf(i) + 50), NO_MOVE); // misses between nodes end
            EXPECT_EQ(choose(book, keyOf(i) - 50), NO_MOVE);
        }
    }
}

TEST(BookLookup, ChoosesInProportionToTheCounts) {
    OpeningBook book; // the node in the middle of three, where the lookup reaches it
    insert(book, keyOf(0), 1);
    for (std::uint32_t count : {1, 9, 5, 3})
        insert(book, keyOf(1), 100 + count, count);
    insert(book, keyOf(2), 1);
    std::srand(12345);
    std::vector<int> seen(10);
    for (int r = 0; r < 36000; ++r)
        ++seen[choose(book, keyOf(1)) - 100];
    for (int count : {1, 9, 5, 3})
        EXPECT_NEAR(seen[count] / 36000.0, count / 18.0, 0.02) << count;
}

// The book the build makes: its keys are the engine's, so games played from it stay in book
// for many moves, and every move it gives is a legal move with the generator's flags (double
// steps, castling). A move that is not legal is never played: the book-file fuzzer's ground.
TEST(BookProbe, TheBuiltBookLeadsGamesThroughTheOpening) {
    auto board = boardFrom(START_FEN);
    ASSERT_TRUE(board->openBook(PELLIX_OPENING_BOOK));
    std::srand(2024);
    int plies = 0;
    for (int game = 0; game < 50; ++game) {
        board->newGame();
        for (Move m; board->gameMoveCount < 20 && (m = board->probeBook()) != NO_MOVE; ++plies) {
            const std::vector<Move> legal = legalMoves(*board);
            ASSERT_NE(std::find(legal.begin(), legal.end(), m), legal.end());
            ASSERT_TRUE(board->playGameMove(m));
        }
        EXPECT_GE(board->gameMoveCount, 4) << "game " << game;
    }
    EXPECT_GE(plies, 50 * 15) << plies;
}
