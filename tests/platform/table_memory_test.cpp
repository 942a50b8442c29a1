// Table memory: blocks of any size come zeroed and whole, never overlap, go back without
// harm, and a size no process can have is refused with null, which the transposition
// table's halving relies on.
#include "platform/table_memory.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <gtest/gtest.h>

namespace {

bool allBytesAre(const unsigned char* block, std::size_t size, unsigned char value) {
    return std::all_of(block, block + size, [value](unsigned char c) { return c == value; });
}

} // namespace

TEST(TableMemory, BlocksAreZeroedWholeAndApart) {
    // Below a page, a page, a huge page, and one that ends inside a huge page.
    const std::size_t sizes[] = {1, 4096, std::size_t(2) << 20, (std::size_t(3) << 20) + 5};
    constexpr int COUNT       = 4;
    for (int round = 0; round < 2; ++round) { // the second reuses what the first gave back
        unsigned char* blocks[COUNT];
        for (int i = 0; i < COUNT; ++i) {
            blocks[i] = static_cast<unsigned char*>(allocateTable(sizes[i]));
            ASSERT_NE(blocks[i], nullptr) << sizes[i];
            EXPECT_TRUE(allBytesAre(blocks[i], sizes[i], 0)) << sizes[i];
            std::memset(blocks[i], i + 1, sizes[i]);
        }
        for (int i = 0; i < COUNT; ++i) {
            EXPECT_TRUE(allBytesAre(blocks[i], sizes[i], std::uint8_t(i + 1))) << sizes[i];
            releaseTable(blocks[i], sizes[i]);
        }
    }
    releaseTable(nullptr, 4096);
    EXPECT_EQ(allocateTable(0), nullptr);
    EXPECT_EQ(allocateTable(SIZE_MAX), nullptr);
    EXPECT_EQ(allocateTable(SIZE_MAX - 4096), nullptr);
}
