// The engine's lookup: the binary search with its kept rule, which never examines the ends
// of a book of three or more nodes, and the choice in proportion to the game counts.
#include "book/opening_book.h"

#include <cstdlib>
#include <gtest/gtest.h>

namespace {

// Keys 100, 200, ... with the high word set too, so that both halves take part.
std::uint64_t keyOf(int index) {
    return 0x00000100'00000000 + 100 * std::uint64_t(index + 1);
}

OpeningBook bookOf(int nodes) {
    OpeningBook book;
    for (int i = 0; i < nodes; ++i)
        book.insertBookMove(std::uint32_t(keyOf(i)), std::uint32_t(keyOf(i) >> 32), Move(i + 1), 1,
                            0, 0);
    return book;
}

Move choose(const OpeningBook& book, std::uint64_t key) {
    return chooseBookMove(book, std::uint32_t(key), std::uint32_t(key >> 32));
}

} // namespace

TEST(BookLookup, FindsEveryInnerNodeAndTheEndsOnlyAsMidpoints) {
    EXPECT_EQ(choose(OpeningBook{}, keyOf(0)), NO_MOVE);
    for (int size = 1; size <= 40; ++size) {
        const OpeningBook book = bookOf(size);
        for (int i = 0; i < size; ++i) {
            // An end is a midpoint only in books of one node, and of two for the first.
            const bool reachable = (i > 0 && i < size - 1) || size == 1 || (size == 2 && i == 0);
            EXPECT_EQ(choose(book, keyOf(i)), reachable ? Move(i + 1) : NO_MOVE)
                << "node " << i << " of " << size;
            // Keys between the nodes, below the first and above the last are misses that end.
            EXPECT_EQ(choose(book, keyOf(i) + 50), NO_MOVE);
            EXPECT_EQ(choose(book, keyOf(i) - 50), NO_MOVE);
        }
        EXPECT_EQ(choose(book, 0), NO_MOVE);
        EXPECT_EQ(choose(book, ~std::uint64_t{0}), NO_MOVE);
        EXPECT_EQ(choose(book, std::uint32_t(keyOf(size / 2))), NO_MOVE); // low word alone
    }
}

TEST(BookLookup, ChoosesInProportionToTheCounts) {
    // The node sits in the middle of three so that the lookup reaches it.
    auto draws = [](std::initializer_list<std::uint32_t> counts, int rounds) {
        OpeningBook book        = bookOf(3);
        const std::uint64_t key = keyOf(1);
        Move move               = 100;
        for (std::uint32_t count : counts)
            book.insertBookMove(std::uint32_t(key), std::uint32_t(key >> 32), ++move, count, 0, 0);
        std::srand(12345);
        std::vector<int> seen(counts.size() + 1);
        for (int r = 0; r < rounds; ++r) {
            const Move m = choose(book, key);
            ++seen[m >= 101 ? m - 100 : 0];
        }
        return seen;
    };
    // The node already holds a move of count 1 (seen[0]); the moves added follow it.
    const std::vector<int> oneAndThree = draws({3}, 20000);
    EXPECT_NEAR(oneAndThree[1] / 20000.0, 0.75, 0.02);
    EXPECT_EQ(oneAndThree[0] + oneAndThree[1], 20000);

    const std::vector<int> three = draws({9, 5, 3}, 34000); // with the first: 1, 9, 5, 3
    EXPECT_NEAR(three[1] / 34000.0, 9 / 18.0, 0.02);
    EXPECT_NEAR(three[2] / 34000.0, 5 / 18.0, 0.02);
    EXPECT_NEAR(three[3] / 34000.0, 3 / 18.0, 0.02);
}

TEST(BookLookup, CountsFromADamagedFileNeverDivideByZero) {
    OpeningBook book;
    book.insertBookMove(7, 0, 11, 0, 0, 0);
    book.insertBookMove(7, 0, 12, 0, 0, 0);
    EXPECT_EQ(chooseBookMove(book, 7, 0), Move(11));
    book.insertBookMove(7, 0, 13, 0xFFFFFFFF, 0, 0);
    book.insertBookMove(7, 0, 14, 0xFFFFFFFF, 0, 0);
    for (int i = 0; i < 100; ++i)
        EXPECT_NE(chooseBookMove(book, 7, 0), NO_MOVE);
}
