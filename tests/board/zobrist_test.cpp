// The key generator and the keys it makes.
#include "board/mt19937.h"
#include "test_support.h"

#include <algorithm>
#include <cstring>
#include <gtest/gtest.h>

TEST(Zobrist, GeneratorMatchesTheReferenceOutputs) {
    // The published test vector of MT19937's array seeding.
    const std::uint32_t seed[] = {0x123, 0x234, 0x345, 0x456};
    Mt19937 generator;
    generator.seedArray(seed, 4);
    const std::uint32_t expected[] = {1067595299u, 955945823u, 477289528u, 4107218783u,
                                      4228976476u};
    for (std::uint32_t value : expected)
        EXPECT_EQ(generator.next(), value);
    // Unseeded, the generator starts from 5489: its 10000th output is 4123659995.
    Mt19937 unseeded;
    for (int i = 0; i < 9999; ++i)
        unseeded.next();
    EXPECT_EQ(unseeded.next(), 4123659995u);
}

TEST(Zobrist, KeysAreTheSameForEveryBoardAndDistinct) {
    auto a = boardFrom(START_FEN), b = boardFrom(START_FEN);
    EXPECT_EQ(0, std::memcmp(a->pieceKey, b->pieceKey, sizeof a->pieceKey));
    EXPECT_EQ(a->sideKey, b->sideKey);
    EXPECT_EQ(a->hashKey, b->hashKey);
    // A second initialisation leaves the keys alone.
    const std::uint64_t side = a->sideKey;
    EXPECT_EQ(a->initZobrist(), 1);
    EXPECT_EQ(a->sideKey, side);

    std::vector<std::uint64_t> keys(a->pieceKey, a->pieceKey + 768);
    keys.insert(keys.end(), a->epKey, a->epKey + 8);
    keys.insert(keys.end(), a->castleKey, a->castleKey + 4);
    keys.push_back(a->sideKey);
    std::sort(keys.begin(), keys.end());
    EXPECT_EQ(std::adjacent_find(keys.begin(), keys.end()), keys.end());
}

// The keys come from the seeded generator in a fixed layout: the first key drawn is Black's
// pawn on a1, and the last one the side key after the two replacements.
TEST(Zobrist, KeysFollowTheGeneratorInOrder) {
    const std::uint32_t seed[] = {1620, 1347, 1074, 801};
    Mt19937 generator;
    generator.seedArray(seed, 4);
    std::vector<std::uint64_t> drawn(785);
    for (auto& key : drawn)
        key = generator.next64();
    auto board = boardFrom(START_FEN);
    EXPECT_EQ(board->pieceKeyOf(BLACK, PAWN, 0), drawn[0]);
    EXPECT_EQ(board->pieceKeyOf(WHITE, PAWN, 0), drawn[6 * 64]);
    EXPECT_EQ(board->pieceKeyOf(BLACK, KING, 63), drawn[5 * 64 + 63]);
    EXPECT_EQ(board->pieceKeyOf(WHITE, BISHOP, 32), drawn[781]); // key 544, drawn again
    EXPECT_EQ(board->pieceKeyOf(WHITE, KNIGHT, 17), drawn[782]); // key 465, drawn again
    EXPECT_EQ(board->pieceKeyOf(WHITE, KNIGHT, 16), drawn[464]);
    EXPECT_EQ(board->epKey[0], drawn[768]);
    EXPECT_EQ(board->castleKey[3], drawn[779]);
    EXPECT_EQ(board->sideKey, drawn[780]);
}
