// The book: the PGN reader's main line and its cuts between games, SAN tokens read into legal
// moves, and the builder's counts, percentages and limits, with games that cannot be
// replayed left out whole, and its file the same however it was built; the file's bytes and
// order, read back, and the tools' refusal of a file that is not whole; the lookup with its
// kept rule, which never examines the ends of a book of three or more nodes, and its draw;
// and the built book's moves played as the legal moves they stand for.
#include "book/book_builder.h"
#include "book/game_moves.h"
#include "book/opening_book.h"
#include "test_support.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <random>
#include <sstream>
#include <tuple>

namespace {

using Lines = std::vector<std::string>;

std::vector<PgnGame> readAll(std::string_view text) {
    PgnReader reader(text);
    std::vector<PgnGame> games;
    for (PgnGame game; reader.next(game);)
        games.push_back(game);
    return games;
}

using Bytes = std::vector<std::uint8_t>;

std::string scratchPath(const std::string& name) {
    return (std::filesystem::temp_directory_path() /
            ("pellix-" + name + "-" + std::to_string(std::random_device{}())))
        .string();
}

Bytes fileBytes(const std::string& path) {
    std::ifstream in(path, std::ios::binary); // closed on return, before a removal (Windows)
    return Bytes(std::istreambuf_iterator<char>(in), {});
}

struct SkipList : BuildListener {
    Lines lines;
    void skipped(std::uint64_t game, SkipReason reason, const std::string& detail) override {
        lines.push_back("game " + std::to_string(game) + ": " + skipReasonText(reason) + ": " +
                        detail);
    }
    void progress(const BuildTally&) override {}
};

struct Built {
    OpeningBook book;
    Lines skipped;
    Bytes bytes; // the file, empty when none was written
    BuildTally tally;
};

// The book built from `pgn` through a file, as pellix-book builds it.
Built build(const std::string& pgn, BookBuildOptions options = {}) {
    const std::string pgnPath = scratchPath("games"), bookPath = scratchPath("book");
    std::ofstream(pgnPath, std::ios::binary) << pgn;
    Built built;
    SkipList skips;
    std::string error;
    std::FILE* in = std::fopen(pgnPath.c_str(), "rb");
    if (buildBook(
            in, bookPath.c_str(), options,
            [] { return std::unique_ptr<ChessBoard>(boardFrom(START_FEN)); }, skips, built.tally,
            error)) {
        built.bytes = fileBytes(bookPath);
        EXPECT_TRUE(built.book.readBook(built.bytes.data(), built.bytes.size()));
    }
    std::fclose(in);
    std::filesystem::remove(pgnPath);
    std::filesystem::remove(bookPath);
    built.skipped = skips.lines;
    return built;
}

// The node after `line` (coordinate moves from the initial position) as "move count white
// black" entries joined by commas, in node order.
std::string nodeListing(const OpeningBook& book, const Lines& line) {
    auto board = boardFrom(START_FEN);
    for (const std::string& move : line)
        board->playGameMove(findMove(*board, move));
    std::ostringstream listing;
    const BookNode* node = book.findNode(board->hashKey);
    for (std::uint32_t i = 0; node && i < node->moveCount; ++i) {
        char text[16];
        ChessBoard::moveToLongText(node->moves[i].move, text);
        listing << (i ? ", " : "") << text << ' ' << node->moves[i].count << ' '
                << int(node->moves[i].whitePercent) << ' ' << int(node->moves[i].blackPercent);
    }
    return listing.str();
}

// Saves the book at `path` and answers the bytes written there.
Bytes savedBytes(OpeningBook& book, const std::string& path) {
    EXPECT_TRUE(book.saveBook(path.c_str()));
    return fileBytes(path);
}

} // namespace

// The main line is kept and everything else read past (an escape line right behind the
// byte-order mark too, where tools put one); without a termination marker a game ends where
// the next tags begin. A malformed game is reported and the next one read.
TEST(PgnReader, KeepsTheMainLineOfEachGame) {
    const std::vector<PgnGame> games = readAll(
        "\xEF\xBB\xBF% exported 1. c4\n[Event \"Club \\\"A\\\" [open]\"]\n[Result \"1-0\"]\n"
        "% escaped 1. d4\n\n"
        "1. e4 {best; (really)} e5 2.Nf3 $1 Nc6!? (2... d6 (2... Nf6) 3. d4) 3. Bb5 ; ( Bc4\n"
        "3... a6 4. O-O!! 0-0 *\n\n[FEN \"4k3/8/8/8/8/8/4P3/4K3 w - - 0 1\"]\n1. e4 Kd7 1/2-1/2\n"
        "[Result \"0-1\"] 1. d4 d5\n[Event \"x]\n1. c4 1-0\n1. e4 ) e5 1-0\n1. d4 (1. c4\n\n"
        "[A \"b\"] 1. c4 {never closed");
    ASSERT_EQ(games.size(), 7u);
    EXPECT_EQ(games[0].moves, (Lines{"e4", "e5", "Nf3", "Nc6!?", "Bb5", "a6", "O-O!!", "0-0"}));
    EXPECT_EQ(games[0].result, RESULT_UNKNOWN); // the marker "*" overrides the tag
    EXPECT_EQ(games[1].fen, "4k3/8/8/8/8/8/4P3/4K3 w - - 0 1");
    EXPECT_EQ(games[1].result, RESULT_DRAW);
    EXPECT_EQ(games[2].moves, (Lines{"d4", "d5"}));
    EXPECT_EQ(games[2].result, RESULT_BLACK_WINS);
    // clang-format off
    const char* const errors[] = {"", "", "", "malformed tag pair", "')' without its '('",
                                  "variation without its closing parenthesis",
                                  "comment without its closing brace"};
    // clang-format on
    for (std::size_t i = 0; i < games.size(); ++i)
        EXPECT_EQ(games[i].error, errors[i]) << "game " << i + 1;
}

// The builder reads in blocks cut where lastGameStart says: the games of the two parts, one
// after the other, are the games of the whole, for real games with tags (also with Windows
// line ends) and for one game a line without tags, the shipped book's form.
TEST(PgnReader, BlocksAreCutBetweenGames) {
    const std::string real = readDataFile("gnuchess-300.pgn").substr(0, 30000);
    std::string crlfText;
    for (char c : real)
        crlfText += c == '\n' ? std::string("\r\n") : std::string(1, c);
    const std::string& crlf = crlfText;
    const std::string lines = "e4 e5 Nf3 1-0\nd4 d5 c4 *\nc4 {a note} e5 0-1\nNf3 d5 1/2-1/2\n";
    auto summary            = [](std::string_view text) {
        std::string games;
        for (const PgnGame& g : readAll(text)) {
            for (const std::string& m : g.moves)
                games += m + " ";
            games += std::to_string(g.result) + g.error + "\n";
        }
        return games;
    };
    for (const std::string* text : std::vector{&real, &crlf, &lines}) {
        const std::string whole = summary(*text);
        for (std::size_t length = 0; length <= text->size(); length += 1 + length / 8) {
            const std::size_t cut = lastGameStart(std::string_view(*text).substr(0, length));
            ASSERT_LE(cut, length);
            EXPECT_EQ(summary(std::string_view(*text).substr(0, cut)) +
                          summary(std::string_view(*text).substr(cut)),
                      whole)
                << "cut at " << cut << " of " << length;
        }
    }
}

TEST(GameMoves, TextMeansTheLegalMoveWithTheGeneratorsFlags) {
    const char* const pinC3   = "4k3/8/8/6N1/1b6/2N5/8/4K3 w - - 0 1"; // the c3 knight is pinned
    const char* const promote = "5n2/4P3/8/8/8/8/8/k3K3 w - - 0 1";
    // The token, what reading it answers, and the legal move it means when that is GAME_MOVE_OK.
    // clang-format off
    const std::tuple<const char*, const char*, GameMoveStatus, const char*> cases[] = {
        {START_FEN, "e4!?", GAME_MOVE_OK, "e2e4"},
        {pinC3, "Ne4", GAME_MOVE_OK, "g5e4"}, // the first match is pinned: the other knight
        {pinC3, "Nce4", GAME_MOVE_ILLEGAL, nullptr},
        {"7k/8/8/8/8/8/N3N3/KN5r w - - 0 1", "Nc3", GAME_MOVE_AMBIGUOUS, nullptr},
        {"r3k2r/8/8/8/8/8/8/R3K2R b KQkq - 0 1", "0-0-0", GAME_MOVE_OK, "e8c8"},
        {"4k3/8/8/8/8/8/8/5K1R w - - 0 1", "O-O", GAME_MOVE_NO_SUCH, nullptr},
        {"4k3/8/8/3pP3/8/8/8/4K3 w - d6 0 1", "exd6", GAME_MOVE_OK, "e5d6"},
        {promote, "e8Q", GAME_MOVE_OK, "e7e8q"}, {promote, "exf8=N+", GAME_MOVE_OK, "e7f8n"},
        {START_FEN, "e2e4", GAME_MOVE_UNREADABLE, nullptr},
        {START_FEN, "Ne4Q", GAME_MOVE_UNREADABLE, nullptr},
    };
    // clang-format on
    for (const auto& [fen, token, status, expected] : cases) {
        auto board            = boardFrom(fen);
        const Position before = *board;
        Move move             = 0xDEAD;
        EXPECT_EQ(readGameMove(*board, token, move), status) << fen << " " << token;
        EXPECT_TRUE(samePosition(*board, before)) << token;
        EXPECT_EQ(move, expected ? findMove(*board, expected) : NO_MOVE) << token;
    }
}

// Each position counts the games through it and their results per move. Games that cannot be
// replayed are left out whole: each of them begins with 1. e4, which still counts three games.
// Plies, a minimum of games and full nodes leave moves out.
TEST(BookBuilder, CountsGamesAndResultsPerPositionAndMoveWithinTheLimits) {
    // The fourth game comes back to the initial position: its Nf3 counts once for the game.
    const auto [book, skipped, bytes, tally] =
        build("[Result \"1-0\"]\n1. e4 e5 2. Nf3 Nc6 1-0\n"
              "[Result \"0-1\"]\n1. e4 e5 2. Nf3 Nf6 0-1\n"
              "1. e4 c5 1/2-1/2\n1. Nf3 Nf6 2. Ng1 Ng8 3. Nf3 d5 1-0\n"
              "1. e4 e5 2. Nf3 Nc6 3. Bb5 a6 4. Bxc6 dxc6 5. Bc4 1-0\n"
              "1. e4 e6 2. d4 Bb4+ 3. Nc3 Nf6 4. Nb5 1-0\n"
              "[FEN \"rnbqkbnr/pppppppp/8/8 w\"]\n1. e4 1-0\n1. e4 e5 2. Nf3 Nc6 (2... d6 1-0\n");
    EXPECT_EQ(skipped,
              (Lines{"game 5: no such move: ply 9 \"Bc4\"", "game 6: illegal move: ply 7 \"Nb5\"",
                     "game 7: bad FEN tag: the FEN tag is not a position the engine accepts",
                     "game 8: malformed PGN: variation without its closing parenthesis"}));
    EXPECT_EQ(book.nodes().size(), 7u);
    EXPECT_EQ(nodeListing(book, {}), "e2-e4 3 33 33, Ng1-f3 1 100 0");
    EXPECT_EQ(nodeListing(book, {"e2e4"}), "e7-e5 2 50 50, c7-c5 1 0 0");
    EXPECT_EQ(nodeListing(book, {"e2e4", "e7e5", "g1f3"}), "Nb8-c6 1 100 0, Ng8-f6 1 0 100");
    EXPECT_EQ(nodeListing(book, {"g1f3"}), "Ng8-f6 1 100 0, d7-d5 1 100 0");

    // The limits: plies, the minimum of games, and a full node, which keeps its most played.
    const std::string games   = "1. Nf3 Nf6 2. Ng1 Ng8 3. Nf3 d5 1-0\n1. e4 e5 *\n1. e4 c5 *\n";
    const OpeningBook shallow = build(games, {2, 1}).book;
    EXPECT_EQ(nodeListing(shallow, {"g1f3"}), "Ng8-f6 1 100 0"); // d5 came at ply 6
    EXPECT_EQ(nodeListing(shallow, {"g1f3", "g8f6"}), "");
    EXPECT_EQ(build(games, {20, 2}).book.moveTotal(), 1u); // only e4 was played twice

    std::string pgn = "1. e4 *\n1. e4 *\n";
    for (const char* move : {"a3", "a4", "b3", "b4", "c3", "c4", "d3", "d4", "e3", "f3", "f4", "g3",
                             "g4", "h3", "h4", "Na3"})
        pgn += std::string("1. ") + move + " *\n";
    const std::string start = nodeListing(build(pgn).book, {});
    EXPECT_EQ(std::count(start.begin(), start.end(), ','), 15) << start;
    EXPECT_EQ(start.rfind("e2-e4 2 0 0, ", 0), 0u) << start; // the most played stays
}

// The file depends on the games alone: not on the number of threads, nor on how often the
// tables filled up and spilled to runs. Tables of 64 entries spill hundreds of runs, which
// are merged in groups before the last merge.
TEST(BookBuilder, TheFileIsTheSameForAnyThreadsAndMemory) {
    const std::string pgn = readDataFile("openings.pgn") + readDataFile("gnuchess-300.pgn");
    BookBuildOptions options;
    options.threads       = 1;
    const Built unlimited = build(pgn, options);
    ASSERT_FALSE(unlimited.bytes.empty());
    EXPECT_EQ(unlimited.tally.games, 606u);
    EXPECT_EQ(unlimited.tally.runs, 0);
    for (int threads : {1, 2, 3}) {
        options.threads      = threads;
        options.tableEntries = 64;
        const Built spilled  = build(pgn, options);
        EXPECT_GT(spilled.tally.runs, 48) << threads;
        EXPECT_EQ(spilled.bytes, unlimited.bytes) << threads << " threads, spilled";
        options.tableEntries = 0;
        EXPECT_EQ(build(pgn, options).bytes, unlimited.bytes) << threads << " threads";
    }
}

// Moves go in out of order; the file has the nodes by key and each node's moves by count,
// 302 before 303, which came first: a tie goes by move word, not by arrival. The keys
// are such that ordering by the low word first would put them the other way round. The
// expected bytes are written out field by field, little-endian, so that the test checks the
// format rather than the writer; a loaded book saves the same bytes again.
TEST(BookFile, SavedBytesAreSortedAndReadBack) {
    OpeningBook book;
    for (const auto& [key, move] : {std::pair<std::uint64_t, BookMove>{0x200000001, {303, 5, 0, 0}},
                                    {0x200000001, {302, 5, 20, 40}},
                                    {0x200000001, {301, 9, 33, 33}},
                                    {0xFFFFFFFF, {102, 2, 0, 100}},
                                    {0xFFFFFFFF, {101, 4, 50, 25}},
                                    {0x100000005, {201, 1, 100, 0}}})
        book.insertBookMove(std::uint32_t(key), std::uint32_t(key >> 32), move.move, move.count,
                            move.whitePercent, move.blackPercent);
    // clang-format off
    const Bytes expected = {'B', 'O', 'O', 'K', 1, 0, 1, 0, 3, 0, 0, 0,
        0xFF, 0xFF, 0xFF, 0xFF, 0, 0, 0, 0, 2, 0, 0, 0,   // key, moves
        101, 0, 0, 0, 4, 0, 0, 0, 50, 25,                 // move, count, white %, black %
        102, 0, 0, 0, 2, 0, 0, 0, 0, 100,
        5, 0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0,   201, 0, 0, 0, 1, 0, 0, 0, 100, 0,
        1, 0, 0, 0, 2, 0, 0, 0, 3, 0, 0, 0,
        0x2D, 1, 0, 0, 9, 0, 0, 0, 33, 33,  0x2E, 1, 0, 0, 5, 0, 0, 0, 20, 40,
        0x2F, 1, 0, 0, 5, 0, 0, 0, 0, 0};
    // clang-format on
    const std::string path = (std::filesystem::temp_directory_path() /
                              ("pellix-book-" + std::to_string(std::random_device{}())))
                                 .string();
    EXPECT_EQ(savedBytes(book, path), expected);
    OpeningBook loaded;
    ASSERT_TRUE(loaded.loadBook(path.c_str()));
    EXPECT_EQ(savedBytes(loaded, path), expected);
    std::filesystem::remove(path);
    EXPECT_FALSE(book.saveBook("/nonexistent/book.bin"));

    // The tools take only a whole file: every shorter one, or one with a byte more, is
    // refused at the offset where it goes wrong.
    std::size_t offset;
    EXPECT_EQ(checkBookImage(expected.data(), expected.size(), offset), nullptr);
    for (std::size_t size = 0; size < expected.size(); ++size) {
        EXPECT_NE(checkBookImage(expected.data(), size, offset), nullptr) << size;
        EXPECT_LE(offset, size);
    }
    Bytes longer = expected;
    longer.push_back(0);
    EXPECT_NE(checkBookImage(longer.data(), longer.size(), offset), nullptr);
    EXPECT_EQ(offset, expected.size());
    EXPECT_FALSE(loaded.loadBook("/nonexistent/book.bin"));
}

// Node i has the key 100 (i + 1) in its low word, with the high word set too.
TEST(BookLookup, FindsEveryInnerNodeAndTheEndsOnlyAsMidpoints) {
    const std::uint32_t high = 0x100;
    EXPECT_EQ(chooseBookMove(OpeningBook{}, 100, high), NO_MOVE);
    for (std::uint32_t size = 1; size <= 40; ++size) {
        OpeningBook book;
        for (std::uint32_t i = 0; i < size; ++i)
            book.insertBookMove(100 * (i + 1), high, Move(i + 1), 1, 0, 0);
        for (std::uint32_t i = 0, low = 100; i < size; ++i, low += 100) {
            // An end is a midpoint only in books of one node, and of two for the first.
            const bool reachable = (i > 0 && i < size - 1) || size == 1 || (size == 2 && i == 0);
            EXPECT_EQ(chooseBookMove(book, low, high), reachable ? Move(i + 1) : NO_MOVE)
                << i << "/" << size;
            EXPECT_EQ(chooseBookMove(book, low + 50, high), NO_MOVE); // misses between nodes
            EXPECT_EQ(chooseBookMove(book, low - 50, high), NO_MOVE);
        }
    }
}

// The draw follows the counts, also where they add up to more than two draws of the Windows
// rand() reach (65,534): a chi-square over 6,000 draws from a fixed seed, against the 0.1 %
// point of three degrees of freedom. A choice that ignored the counts, or a draw that stopped
// at 65,534, would be far beyond it.
TEST(BookLookup, DrawsInProportionToTheCounts) {
    const std::uint32_t counts[] = {60000, 50000, 30000, 10000};
    OpeningBook book;
    book.insertBookMove(1, 0, 1, 1, 0, 0); // the ends, which the lookup never examines
    book.insertBookMove(3, 0, 1, 1, 0, 0);
    for (std::uint32_t i = 0; i < 4; ++i)
        book.insertBookMove(2, 0, i + 1, counts[i], 0, 0);
    book.sortByKey();
    std::srand(2026);
    constexpr int DRAWS = 6000;
    int seen[5]         = {};
    for (int i = 0; i < DRAWS; ++i)
        ++seen[chooseBookMove(book, 2, 0)];
    double chiSquare = 0;
    for (int i = 0; i < 4; ++i) {
        const double expected = DRAWS * counts[i] / 150000.0;
        chiSquare += (seen[i + 1] - expected) * (seen[i + 1] - expected) / expected;
    }
    EXPECT_LT(chiSquare, 16.27) << seen[1] << " " << seen[2] << " " << seen[3] << " " << seen[4];
}

// The book the build makes: its keys are the engine's, so games played from it stay in book
// for many moves, and every move it gives is a legal move with the generator's flags (double
// steps, castling). A game that draws a rare move can leave the book after a few plies (the
// draws differ between runtime libraries), so the length is held on average.
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
        EXPECT_GE(board->gameMoveCount, 2) << "game " << game;
    }
    EXPECT_GE(plies, 50 * 10) << plies;
}
