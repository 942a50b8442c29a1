// The book file: the writer's byte layout and order, and a reader that merges records and
// survives damaged files.
#include "book/opening_book.h"
#include "book_test_files.h"

#include <gtest/gtest.h>

namespace {

// Keys chosen so that ordering by the low word first would put them the other way round.
constexpr std::uint64_t KEY_A = 0x00000001'00000005, KEY_B = 0x00000002'00000001;
constexpr std::uint64_t KEY_C = 0x00000000'FFFFFFFF;

bool insert(OpeningBook& book, std::uint64_t key, Move move, std::uint32_t count,
            std::uint8_t white = 0, std::uint8_t black = 0) {
    return book.insertBookMove(std::uint32_t(key), std::uint32_t(key >> 32), move, count, white,
                               black);
}

std::vector<RawNode> contents(const OpeningBook& book) {
    std::vector<RawNode> nodes;
    for (const BookNode& node : book.nodes()) {
        nodes.push_back({node.key(), {}});
        for (std::uint32_t i = 0; i < node.moveCount; ++i)
            nodes.back().moves.push_back({node.moves[i].move, node.moves[i].count,
                                          node.moves[i].whitePercent, node.moves[i].blackPercent});
    }
    return nodes;
}

// A three-node image with records of 2, 1 and 3 moves, and where each record ends.
const std::vector<RawNode> THREE_NODES = {
    {KEY_C, {{101, 4, 50, 25}, {102, 2, 0, 100}}},
    {KEY_A, {{201, 1, 100, 0}}},
    {KEY_B, {{301, 9, 33, 33}, {302, 5, 20, 40}, {303, 3, 0, 0}}},
};

} // namespace

TEST(BookFile, SaveOrdersMovesByCountAndNodesByKey) {
    OpeningBook book;
    insert(book, KEY_B, 303, 3);
    insert(book, KEY_B, 301, 9, 33, 33);
    insert(book, KEY_B, 302, 5, 20, 40);
    insert(book, KEY_A, 201, 1, 100, 0);
    insert(book, KEY_C, 101, 4, 50, 25);
    insert(book, KEY_C, 102, 2, 0, 100);
    ScratchDir dir;
    ASSERT_TRUE(book.saveBook(dir.path("book.bin").c_str()));
    EXPECT_EQ(readFile(dir.path("book.bin")), bookImage(THREE_NODES));

    OpeningBook loaded;
    ASSERT_TRUE(loaded.loadBook(dir.path("book.bin").c_str()));
    EXPECT_EQ(contents(loaded), THREE_NODES);
    EXPECT_TRUE(loaded.isSortedByKey());
    EXPECT_FALSE(book.saveBook(dir.path("missing/book.bin").c_str()));
}

TEST(BookFile, RecordsOfOneKeyMergeAndAFullNodeRefusesMore) {
    ScratchDir dir;
    RawNode full{KEY_A, {}};
    for (Move m = 1; m <= 16; ++m)
        full.moves.push_back({m, m, 0, 0});
    writeFile(dir.path("book.bin"), bookImage({{KEY_B, {{7, 5, 10, 20}}},
                                               full,
                                               {KEY_B, {{7, 99, 0, 0}, {8, 2, 1, 1}}},
                                               {KEY_A, {{17, 50, 0, 0}}}}));
    OpeningBook book;
    ASSERT_TRUE(book.loadBook(dir.path("book.bin").c_str()));
    // The first occurrence of a move keeps its count; the seventeenth move is dropped.
    EXPECT_EQ(contents(book),
              (std::vector<RawNode>{{KEY_B, {{7, 5, 10, 20}, {8, 2, 1, 1}}}, full}));
    EXPECT_FALSE(insert(book, KEY_A, 18, 1));
    EXPECT_TRUE(insert(book, KEY_A, 3, 1000)); // already there: accepted, left as it was
    EXPECT_EQ(book.nodes()[1].moves[2].count, 3u);
}

TEST(BookFile, DamagedFilesKeepTheCompleteRecordsBeforeTheDamage) {
    ScratchDir dir;
    const std::string path                = dir.path("book.bin");
    const std::vector<std::uint8_t> whole = bookImage(THREE_NODES);
    const std::size_t recordEnds[]        = {12 + 12 + 20, 12 + 12 + 20 + 12 + 10, whole.size()};
    for (std::size_t length = 0; length <= whole.size(); ++length) {
        writeFile(path, {whole.begin(), whole.begin() + long(length)});
        OpeningBook book;
        const bool loaded = book.loadBook(path.c_str());
        EXPECT_EQ(loaded, length >= 12) << length;
        std::size_t complete = 0;
        while (complete < 3 && recordEnds[complete] <= length)
            ++complete;
        EXPECT_EQ(contents(book),
                  std::vector<RawNode>(THREE_NODES.begin(), THREE_NODES.begin() + long(complete)))
            << length;
    }

    // A move count beyond 16 ends the reading at that record.
    RawNode tooMany{KEY_B, {}};
    for (Move m = 1; m <= 17; ++m)
        tooMany.moves.push_back({m, 1, 0, 0});
    writeFile(path, bookImage({THREE_NODES[0], tooMany, THREE_NODES[1]}));
    OpeningBook book;
    EXPECT_TRUE(book.loadBook(path.c_str()));
    EXPECT_EQ(contents(book), std::vector<RawNode>{THREE_NODES[0]});

    // A node count far beyond the file reads what is there; a count of 0 reads nothing.
    writeFile(path, bookImage(THREE_NODES, 0xFFFFFFFF));
    OpeningBook more;
    EXPECT_TRUE(more.loadBook(path.c_str()));
    EXPECT_EQ(contents(more), THREE_NODES);
    writeFile(path, bookImage(THREE_NODES, 0));
    OpeningBook none;
    EXPECT_TRUE(none.loadBook(path.c_str()));
    EXPECT_TRUE(none.nodes().empty());
}

TEST(BookFile, AFileThatIsNotABookLeavesTheBookAsItWas) {
    ScratchDir dir;
    const std::string path = dir.path("book.bin");
    OpeningBook book;
    insert(book, KEY_A, 1, 1);
    const std::vector<RawNode> before = contents(book);
    for (std::size_t i = 0; i < 4; ++i) {
        std::vector<std::uint8_t> image = bookImage(THREE_NODES);
        image[i] ^= 0x20; // "book", "BoOK", ...
        writeFile(path, image);
        EXPECT_FALSE(book.loadBook(path.c_str())) << i;
        EXPECT_EQ(contents(book), before);
    }
    EXPECT_FALSE(book.loadBook(dir.path("no-such-file.bin").c_str()));
    EXPECT_FALSE(book.loadBook(dir.path("").c_str())); // a directory
    EXPECT_EQ(contents(book), before);
}
