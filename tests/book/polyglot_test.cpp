// Polyglot books: the published test keys, move words and entries, and the trip of a book to
// the polyglot format and back.
#include "book/book_builder.h"
#include "book/polyglot_books.h"
#include "test_support.h"

#include <gtest/gtest.h>
#include <map>

namespace {

// The book the builder makes of the games, read back.
OpeningBook bookOf(const std::string& pgn) {
    auto board = boardFrom(START_FEN);
    OpeningBook book;
    std::vector<PlayedMove> line;
    std::map<std::pair<std::uint64_t, Move>, std::uint32_t> counts;
    PgnReader reader(pgn);
    std::string detail;
    for (PgnGame game; reader.next(game);)
        if (replayGame(*board, game, 20, line, detail) == SKIP_NONE)
            for (const PlayedMove& p : line)
                ++counts[{p.key, p.move}];
    for (const auto& [at, count] : counts)
        book.insertBookMove(std::uint32_t(at.first), std::uint32_t(at.first >> 32), at.second,
                            count, 0, 0);
    return book;
}

} // namespace

// The nine positions of the format's description, reached by their moves and set up from
// their FEN; the en-passant square of a FEN counts only beside a pawn of the side to move.
TEST(Polyglot, KeysOfThePublishedTestPositions) {
    const std::tuple<std::vector<std::string>, const char*, std::uint64_t> cases[] = {
        {{}, START_FEN, 0x463b96181691fc9c},
        {{"e2e4"},
         "rnbqkbnr/pppppppp/8/8/4P3/8/PPPP1PPP/RNBQKBNR b KQkq e3 0 1",
         0x823c9b50fd114196},
        {{"e2e4", "d7d5"},
         "rnbqkbnr/ppp1pppp/8/3p4/4P3/8/PPPP1PPP/RNBQKBNR w KQkq d6 0 2",
         0x0756b94461c50fb0},
        {{"e2e4", "d7d5", "e4e5"},
         "rnbqkbnr/ppp1pppp/8/3pP3/8/8/PPPP1PPP/RNBQKBNR b KQkq - 0 2",
         0x662fafb965db29d4},
        {{"e2e4", "d7d5", "e4e5", "f7f5"},
         "rnbqkbnr/ppp1p1pp/8/3pPp2/8/8/PPPP1PPP/RNBQKBNR w KQkq f6 0 3",
         0x22a48b5a8e47ff78},
        {{"e2e4", "d7d5", "e4e5", "f7f5", "e1e2"},
         "rnbqkbnr/ppp1p1pp/8/3pPp2/8/8/PPPPKPPP/RNBQ1BNR b kq - 0 3",
         0x652a607ca3f242c1},
        {{"e2e4", "d7d5", "e4e5", "f7f5", "e1e2", "e8f7"},
         "rnbq1bnr/ppp1pkpp/8/3pPp2/8/8/PPPPKPPP/RNBQ1BNR w - - 0 4",
         0x00fdd303c946bdd9},
        {{"a2a4", "b7b5", "h2h4", "b5b4", "c2c4"},
         "rnbqkbnr/p1pppppp/8/8/PpP4P/8/1P1PPPP1/RNBQKBNR b KQkq c3 0 3",
         0x3c8123ea7b067637},
        {{"a2a4", "b7b5", "h2h4", "b5b4", "c2c4", "b4c3", "a1a3"},
         "rnbqkbnr/p1pppppp/8/8/P6P/R1p5/1P1PPPP1/1NBQKBNR b Kkq - 0 4",
         0x5c3f9b829b279560},
    };
    for (const auto& [moves, fen, key] : cases) {
        auto board = boardFrom(START_FEN);
        for (const std::string& m : moves)
            ASSERT_TRUE(board->playGameMove(findMove(*board, m))) << m;
        EXPECT_EQ(polyglotKey(*board), key) << fen;
        EXPECT_EQ(polyglotKey(*boardFrom(fen)), key) << fen;
    }
}

// Every legal move of positions with castling both ways, promotions and en passant comes back
// from its word; castling is written as the king taking its rook. Entries are big-endian, and
// a file of partial entries or unsorted keys is refused where it goes wrong.
TEST(Polyglot, MoveWordsAndEntries) {
    for (const char* fen : {KIWIPETE_FEN, "r3k2r/1P6/8/8/3pP3/8/6p1/R3K2R b KQkq e3 0 1"}) {
        auto board = boardFrom(fen);
        for (Move m : legalMoves(*board))
            EXPECT_EQ(moveOfPolyglot(*board, polyglotMove(m)), m) << fen;
    }
    auto board = boardFrom(KIWIPETE_FEN);
    EXPECT_EQ(polyglotMove(findMove(*board, "e1g1")), 7 | 4 << 6);
    EXPECT_EQ(polyglotMove(findMove(*board, "e1c1")), 0 | 4 << 6);
    EXPECT_EQ(polyglotMove(findMove(*boardFrom("4k3/1P6/8/8/8/8/8/4K3 w - - 0 1"), "b7b8n")),
              57 | 49 << 6 | 1 << 12);

    std::uint8_t bytes[48];
    writePolyglotEntry({0x0102030405060708, 0x090a, 0x0b0c, 0x0d0e0f10}, bytes);
    for (int i = 0; i < 16; ++i)
        EXPECT_EQ(bytes[i], i + 1);
    const PolyglotEntry back = readPolyglotEntry(bytes);
    EXPECT_EQ(back.key, 0x0102030405060708u);
    EXPECT_EQ(back.weight, 0x0b0c);
    writePolyglotEntry({0x0102030405060708, 1, 1, 0}, bytes + 16);
    writePolyglotEntry({0x0102030405060707, 1, 1, 0}, bytes + 32);
    std::size_t offset;
    EXPECT_EQ(checkPolyglotImage(bytes, 32, offset), nullptr); // equal keys are in order
    EXPECT_NE(checkPolyglotImage(bytes, 48, offset), nullptr);
    EXPECT_EQ(offset, 32u);
    EXPECT_NE(checkPolyglotImage(bytes, 40, offset), nullptr);
    EXPECT_EQ(offset, 32u);
}

// Exported and imported again, every reachable position holds the moves and counts of the
// book's positions with its polyglot key, added up: positions that differ only in an
// en-passant file polyglot ignores (1.e4 e6 2.d4 and 1.d4 e6 2.e4) share their moves.
TEST(PolyglotBooks, ExportThenImportKeepsTheMovesAndCounts) {
    const OpeningBook book =
        bookOf(readDataFile("openings.pgn") + "1. e4 e6 2. d4 d5 *\n1. d4 e6 2. e4 c5 *\n");
    auto board = boardFrom(START_FEN);
    ExportTally exported;
    const std::vector<PolyglotEntry> entries =
        exportPolyglot(*board, book, 20, ExportWeight::COUNT, exported);
    EXPECT_GT(exported.positions, 3000u);
    EXPECT_LT(exported.keys, exported.positions);
    for (std::size_t i = 1; i < entries.size(); ++i)
        ASSERT_TRUE(
            entries[i - 1].key < entries[i].key ||
            (entries[i - 1].key == entries[i].key && entries[i - 1].weight >= entries[i].weight));

    OpeningBook imported;
    ImportTally tally;
    importPolyglot(*board, entries, 20, imported, tally);
    EXPECT_EQ(tally.unreached, 0u);
    std::map<std::uint64_t, std::map<std::uint16_t, std::uint32_t>> byKey;
    std::vector<std::pair<std::uint64_t, std::uint64_t>> reached; // engine key, polyglot key
    walkBook(*board, 20, [&](ChessBoard& b, std::vector<Move>& follow) {
        const BookNode* node = book.findNode(b.hashKey);
        if (!node)
            return;
        reached.push_back({b.hashKey, polyglotKey(b)});
        for (std::uint32_t i = 0; i < node->moveCount; ++i) {
            follow.push_back(moveOfPolyglot(b, polyglotMove(node->moves[i].move)));
            byKey[reached.back().second][polyglotMove(follow.back())] += node->moves[i].count;
        }
    });
    ASSERT_EQ(reached.size(), exported.positions);
    for (const auto& [key, polyglot] : reached) {
        const BookNode* node = imported.findNode(key);
        ASSERT_NE(node, nullptr);
        std::map<std::uint16_t, std::uint32_t> moves;
        for (std::uint32_t i = 0; i < node->moveCount; ++i) {
            moves[polyglotMove(node->moves[i].move)] = node->moves[i].count;
            EXPECT_EQ(node->moves[i].whitePercent + node->moves[i].blackPercent, 0);
        }
        EXPECT_EQ(moves, byKey[polyglot]);
    }
    board->newGame();
    for (const char* m : {"e2e4", "e7e6", "d2d4"})
        board->playGameMove(findMove(*board, m));
    EXPECT_EQ(imported.findNode(board->hashKey)->moveCount,
              book.findNode(board->hashKey)->moveCount + 1);
}
