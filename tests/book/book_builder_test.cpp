// Books built from games: which positions and moves end up in the book, with what counts and
// percentages, and games that cannot be replayed left out whole.
#include "book/book_builder.h"
#include "book/game_moves.h"
#include "test_support.h"

#include <gtest/gtest.h>

namespace {

const char* const GAMES = "[Result \"1-0\"]\n1. e4 e5 2. Nf3 Nc6 1-0\n"
                          "[Result \"0-1\"]\n1. e4 e5 2. Nf3 Nf6 0-1\n"
                          "1. e4 c5 1/2-1/2\n"
                          "1. d4 d5 1-0\n"
                          // Back to the initial position: its Nf3 counts once for the game.
                          "1. Nf3 Nf6 2. Ng1 Ng8 3. Nf3 d5 1-0\n"
                          "1. e4 e5 2. Ke3 1-0\n";

struct Expected {
    const char* line; // moves from the initial position
    struct {
        const char* san;
        std::uint32_t count;
        int white, black;
    } moves[3];
};

const Expected EXPECTED[] = {
    {"", {{"e4", 3, 33, 33}, {"d4", 1, 100, 0}, {"Nf3", 1, 100, 0}}},
    {"e4", {{"e5", 2, 50, 50}, {"c5", 1, 0, 0}}},
    {"e4 e5", {{"Nf3", 2, 50, 50}}},
    {"e4 e5 Nf3", {{"Nc6", 1, 100, 0}, {"Nf6", 1, 0, 100}}},
    {"d4", {{"d5", 1, 100, 0}}},
    {"Nf3", {{"Nf6", 1, 100, 0}, {"d5", 1, 100, 0}}},
    {"Nf3 Nf6", {{"Ng1", 1, 100, 0}}},
    {"Nf3 Nf6 Ng1", {{"Ng8", 1, 100, 0}}},
};

struct Built {
    OpeningBook book;
    std::vector<std::string> skipped; // "game N: reason: detail"
    std::size_t dropped = 0;
};

Built build(const std::string& pgn, BookBuildOptions options = {}) {
    auto board = boardFrom(START_FEN);
    BookBuilder builder(*board, options);
    Built built;
    PgnReader reader(pgn);
    PgnGame game;
    std::string detail;
    while (reader.next(game))
        if (const SkipReason reason = builder.addGame(game, detail); reason != SKIP_NONE)
            built.skipped.push_back("game " + std::to_string(game.number) + ": " +
                                    skipReasonText(reason) + ": " + detail);
    built.dropped = builder.fillBook(built.book);
    return built;
}

// A board with the moves of `line` played from the initial position.
std::unique_ptr<SilentBoard> after(const std::string& line) {
    auto board = boardFrom(START_FEN);
    PgnReader reader(line);
    PgnGame game;
    Move move;
    if (reader.next(game))
        for (const std::string& san : game.moves) {
            EXPECT_EQ(readGameMove(*board, san, move), GAME_MOVE_OK) << san;
            board->playGameMove(move);
        }
    return board;
}

std::string entry(Move move, std::uint32_t count, int white, int black) {
    char text[16];
    ChessBoard::moveToLongText(move, text);
    return std::string(text) + " " + std::to_string(count) + " " + std::to_string(white) + " " +
           std::to_string(black);
}

// The node of the position after `line`, as "move count white black" entries in node order.
std::vector<std::string> nodeListing(const OpeningBook& book, const std::string& line) {
    std::vector<std::string> listing;
    if (const BookNode* node = book.findNode(after(line)->hashKey))
        for (std::uint32_t i = 0; i < node->moveCount; ++i)
            listing.push_back(entry(node->moves[i].move, node->moves[i].count,
                                    node->moves[i].whitePercent, node->moves[i].blackPercent));
    return listing;
}

std::vector<std::string> expectedListing(const Expected& e) {
    auto board = after(e.line);
    std::vector<std::string> listing;
    Move move;
    for (const auto& m : e.moves)
        if (m.san && readGameMove(*board, m.san, move) == GAME_MOVE_OK)
            listing.push_back(entry(move, m.count, m.white, m.black));
    return listing;
}

} // namespace

TEST(BookBuilder, CountsGamesAndResultsPerPositionAndMove) {
    const Built built = build(GAMES);
    EXPECT_EQ(built.skipped, std::vector<std::string>{"game 6: no such move: ply 3 \"Ke3\""});
    EXPECT_EQ(built.book.nodes().size(), std::size(EXPECTED));
    EXPECT_EQ(built.book.moveTotal(), 13u);
    for (const Expected& e : EXPECTED)
        EXPECT_EQ(nodeListing(built.book, e.line), expectedListing(e)) << "after " << e.line;
}

TEST(BookBuilder, PliesAndMinimumGamesLimitTheBook) {
    const Built shallow = build(GAMES, {2, 1});
    EXPECT_EQ(shallow.book.nodes().size(), 4u); // the start and the three first moves
    // d5 comes from the position after 1. Nf3 again, but at ply 6.
    EXPECT_EQ(nodeListing(shallow.book, "Nf3"), std::vector<std::string>{"Ng8-f6 1 100 0"});
    EXPECT_TRUE(nodeListing(shallow.book, "e4 e5").empty());

    const Built popular = build(GAMES, {20, 2});
    EXPECT_EQ(popular.book.nodes().size(), 3u);
    EXPECT_EQ(popular.book.moveTotal(), 3u);
    EXPECT_EQ(nodeListing(popular.book, "e4 e5").size(), 1u);
}

TEST(BookBuilder, AFullNodeKeepsTheMostPlayedMoves) {
    const char* const firstMoves[] = {"a3", "a4", "b3", "b4", "c3", "c4", "d3", "d4",
                                      "e3", "f3", "f4", "g3", "g4", "h3", "h4", "Na3"};
    std::string pgn                = "1. e4 *\n1. e4 *\n";
    for (const char* move : firstMoves)
        pgn += std::string("1. ") + move + " *\n";
    const Built built = build(pgn);
    EXPECT_EQ(built.dropped, 1u);
    const std::vector<std::string> start = nodeListing(built.book, "");
    ASSERT_EQ(start.size(), 16u);
    EXPECT_EQ(start[0], "e2-e4 2 0 0");
}

TEST(BookBuilder, GamesThatCannotBeReplayedAreLeftOutWhole) {
    const Built built = build("1. e4 e5 2. Nf3 Nc6 (2... d6 1-0\n\n"
                              "[FEN \"rnbqkbnr/pppppppp/8/8 w\"]\n1. e4 1-0\n"
                              "1. e4 e5 2. Qh5 Nc6 3. Qxe4 1-0\n"
                              "1. e4 e5 2. Nf3 Nc6 3. Bb5 a6 4. Bxc6 dxc6 5. Bc4 1-0\n"
                              "1. e4 e6 2. d4 Bb4+ 3. Nc3 Nf6 4. Nb5 1-0\n"
                              "1. d4 d5 0-1\n");
    EXPECT_EQ(built.skipped,
              (std::vector<std::string>{
                  "game 1: malformed PGN: variation without its closing parenthesis",
                  "game 2: bad FEN tag: the FEN tag is not a position the engine accepts",
                  "game 3: no such move: ply 5 \"Qxe4\"",
                  "game 4: no such move: ply 9 \"Bc4\"",
                  "game 5: illegal move: ply 7 \"Nb5\"",
              }));
    EXPECT_EQ(built.book.nodes().size(), 2u);
    EXPECT_EQ(nodeListing(built.book, ""), std::vector<std::string>{"d2-d4 1 0 100"});
}
