// The keys of two known positions, written down once. Every book file is keyed by these
// keys: a change to the generator, its seed, the order of the draws or the layout shows here.
#include "test_support.h"

#include <gtest/gtest.h>
#include <tuple>

TEST(Zobrist, KnownPositionsHaveTheirKnownKeys) {
    const std::tuple<const char*, std::uint64_t> cases[] = {
        {START_FEN, 0xbd29f4e08de3216a},
        // Black to move, every castling right, an en-passant file, and the white bishop and
        // knight whose keys are drawn a second time.
        {"r3k2r/8/8/B7/3Pp3/1N6/8/R3K2R b KQkq d3 0 1", 0x7e17c8ab4e706ba4},
    };
    for (const auto& [fen, key] : cases) {
        auto board = boardFrom(fen);
        EXPECT_EQ(board->hashKey, key) << fen << " 0x" << std::hex << board->hashKey;
        EXPECT_EQ(boardFrom(fen)->hashKey, board->hashKey) << "the same for every board";
    }
}
