// Splitting PGN text into games: what is kept of the move text and what is read past, and
// malformed games that are reported without losing the games after them.
#include "book/pgn_reader.h"

#include <gtest/gtest.h>

namespace {

std::vector<PgnGame> readAll(std::string_view text) {
    PgnReader reader(text);
    std::vector<PgnGame> games;
    PgnGame game;
    while (reader.next(game))
        games.push_back(game);
    return games;
}

using Moves = std::vector<std::string>;

} // namespace

TEST(PgnReader, KeepsTheMainLineAndReadsPastEverythingElse) {
    const std::vector<PgnGame> games = readAll(
        "\xEF\xBB\xBF[Event \"Club \\\"A\\\" [open]\"]\n"
        "[Result \"1-0\"]\n"
        "% an escaped line 1. d4\n"
        "\n"
        "1. e4 {best by test; (really)} e5 2.Nf3 $1 Nc6!? (2... d6 (2... Nf6 3. Nxe5) 3. d4)\n"
        "3. Bb5 ; the Spanish ( 3. Bc4\n"
        "3... a6 4. O-O!! 0-0 *\n"
        "\n"
        "[FEN \"4k3/8/8/8/8/8/4P3/4K3 w - - 0 1\"]\n"
        "[Result \"0-1\"]\n"
        "1. e4 Kd7 1/2-1/2\n"
        "[Result \"1/2-1/2\"] 1. d4 d5\n"
        "[Event \"last\"]\n1. c4 0-1");
    ASSERT_EQ(games.size(), 4u);
    EXPECT_EQ(games[0].number, 1);
    EXPECT_EQ(games[0].moves, (Moves{"e4", "e5", "Nf3", "Nc6!?", "Bb5", "a6", "O-O!!", "0-0"}));
    EXPECT_EQ(games[0].result, RESULT_UNKNOWN); // the marker "*" overrides the tag
    EXPECT_TRUE(games[0].error.empty()) << games[0].error;
    EXPECT_EQ(games[1].fen, "4k3/8/8/8/8/8/4P3/4K3 w - - 0 1");
    EXPECT_EQ(games[1].moves, (Moves{"e4", "Kd7"}));
    EXPECT_EQ(games[1].result, RESULT_DRAW);
    // Without a marker the game ends where the next tags begin, and the tag gives the result.
    EXPECT_EQ(games[2].moves, (Moves{"d4", "d5"}));
    EXPECT_EQ(games[2].result, RESULT_DRAW);
    EXPECT_EQ(games[3].number, 4);
    EXPECT_EQ(games[3].moves, (Moves{"c4"}));
    EXPECT_EQ(games[3].result, RESULT_BLACK_WINS);
}

// Tools that write a byte-order mark often put an escape line right behind it.
TEST(PgnReader, AnEscapeLineRightAfterAByteOrderMarkIsSkipped) {
    const std::vector<PgnGame> games = readAll("\xEF\xBB\xBF% exported by a tool\n1. e4 e5 1-0\n");
    ASSERT_EQ(games.size(), 1u);
    EXPECT_TRUE(games[0].error.empty()) << games[0].error;
    EXPECT_EQ(games[0].moves, (Moves{"e4", "e5"}));
}

TEST(PgnReader, MalformedGamesAreReportedAndTheNextGameIsRead) {
    const struct {
        const char* text;
        const char* error;
    } cases[] = {
        {"[Event \"unclosed]\n1. e4 e5 1-0\n", "malformed tag pair"},
        {"[Event unquoted]\n1. e4 1-0\n", "malformed tag pair"},
        {"1. e4 ) e5 1-0\n", "')' without its '('"},
        {"1. e4 } e5 1-0\n", "'}' outside a comment"},
        {"1. e4 (1. d4 d5\n\n[Event \"next\"]\n", "variation without its closing parenthesis"},
        {"1. e4 {never closed 1-0\n", "comment without its closing brace"},
    };
    for (const auto& c : cases) {
        const std::string text = std::string(c.text) + "\n[Event \"good\"]\n1. d4 Nf6 0-1\n";
        const std::vector<PgnGame> games = readAll(text);
        ASSERT_FALSE(games.empty()) << c.text;
        EXPECT_EQ(games[0].error, c.error) << c.text;
        // An unclosed comment swallows the rest of the text; every other error stays in its game.
        if (std::string(c.error).starts_with("comment"))
            continue;
        ASSERT_EQ(games.size(), 2u) << c.text;
        EXPECT_TRUE(games[1].error.empty()) << c.text;
        EXPECT_EQ(games[1].moves, (Moves{"d4", "Nf6"})) << c.text;
        EXPECT_EQ(games[1].number, 2);
    }
    EXPECT_TRUE(readAll(" \n\t\r\n").empty());
}
