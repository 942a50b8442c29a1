// The book file: the writer's bytes and order, read back, and a reader that keeps the
// complete records of a damaged file.
#include "book/opening_book.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <random>

namespace {

using Bytes = std::vector<std::uint8_t>;
struct RawNode {
    std::uint64_t key;
    std::vector<BookMove> moves;
};

// Keys chosen so that ordering by the low word first would put them the other way round.
const std::vector<RawNode> THREE_NODES = {
    {0x00000000'FFFFFFFF, {{101, 4, 50, 25}, {102, 2, 0, 100}}},
    {0x00000001'00000005, {{201, 1, 100, 0}}},
    {0x00000002'00000001, {{301, 9, 33, 33}, {302, 5, 20, 40}, {303, 5, 0, 0}}},
};

// A book file built byte by byte, so that the tests check the format rather than the writer.
Bytes bookImage(const std::vector<RawNode>& nodes) {
    Bytes out = {'B', 'O', 'O', 'K'};
    auto put  = [&](std::uint64_t value, int bytes) {
        for (int i = 0; i < bytes; ++i)
            out.push_back(std::uint8_t(value >> (8 * i)));
    };
    put(0x00010001, 4);
    put(nodes.size(), 4);
    for (const RawNode& node : nodes) {
        put(node.key, 8);
        put(node.moves.size(), 4);
        for (const BookMove& m : node.moves) {
            put(m.move, 4);
            put(m.count, 4);
            put(m.whitePercent, 1);
            put(m.blackPercent, 1);
        }
    }
    return out;
}

Bytes imageOf(const OpeningBook& book) {
    std::vector<RawNode> nodes;
    for (const BookNode& node : book.nodes())
        nodes.push_back({node.key(), {node.moves, node.moves + node.moveCount}});
    return bookImage(nodes);
}

} // namespace

// Moves go in out of order; the file has the nodes by key and each node's moves by count,
// 302 before 303 as the exchange sort leaves that tie (a stable sort would not).
TEST(BookFile, SavedBytesAreSortedAndReadBack) {
    OpeningBook book;
    for (int n : {2, 0, 1})
        for (auto m = THREE_NODES[n].moves.rbegin(); m != THREE_NODES[n].moves.rend(); ++m)
            book.insertBookMove(std::uint32_t(THREE_NODES[n].key),
                                std::uint32_t(THREE_NODES[n].key >> 32), m->move, m->count,
                                m->whitePercent, m->blackPercent);
    const std::filesystem::path file = std::filesystem::temp_directory_path() /
                                       ("pellix-book-" + std::to_string(std::random_device{}()));
    const std::string path = file.string();
    ASSERT_TRUE(book.saveBook(path.c_str()));
    std::ifstream in(file, std::ios::binary);
    EXPECT_EQ(Bytes(std::istreambuf_iterator<char>(in), {}), bookImage(THREE_NODES));
    in.close();
    OpeningBook loaded;
    ASSERT_TRUE(loaded.loadBook(path.c_str()));
    EXPECT_EQ(imageOf(loaded), bookImage(THREE_NODES));
    std::filesystem::remove(file);
    EXPECT_FALSE(book.saveBook("/nonexistent/book.bin"));
    EXPECT_FALSE(loaded.loadBook("/nonexistent/book.bin"));
}

// A file cut anywhere keeps the complete records before the cut; one that does not start
// like a book is refused and leaves the book as it was.
TEST(BookFile, DamagedFilesKeepTheRecordsBeforeTheDamage) {
    const Bytes whole              = bookImage(THREE_NODES);
    const std::size_t recordEnds[] = {12 + 12 + 20, 12 + 12 + 20 + 12 + 10, whole.size()};
    for (std::size_t length = 0; length <= whole.size(); ++length) {
        OpeningBook book;
        EXPECT_EQ(book.readBook(whole.data(), length), length >= 12) << length;
        std::size_t complete = 0;
        while (complete < 3 && recordEnds[complete] <= length)
            ++complete;
        EXPECT_EQ(imageOf(book),
                  bookImage({THREE_NODES.begin(), THREE_NODES.begin() + long(complete)}))
            << length;
    }
    OpeningBook refused;
    refused.insertBookMove(5, 0, 3, 4, 0, 0);
    Bytes lower = whole;
    lower[1] ^= 0x20; // "BoOK"
    EXPECT_FALSE(refused.readBook(lower.data(), lower.size()));
    EXPECT_EQ(imageOf(refused), bookImage({{5, {{3, 4, 0, 0}}}}));
}
