// XBoard sessions with the real executable over pipes: the feature handshake, force mode,
// the opponent's moves, take-back, set-up and the time controls.
#include "engine_process.h"
#include "engine_test_support.h"
#include "test_support.h"

#include <cctype>
#include <gtest/gtest.h>
#include <thread>

namespace {

constexpr Millis PROMPT{2000};
constexpr Millis SEARCH{20000};

const char* const FEATURES = "feature setboard=1 myname=\"Pellix 1.1b\" analyze=0 ping=1 draw=0 "
                             "sigint=0 variants=\"normal\" done=1 colors=0";

void startXboard(EngineProcess& engine) {
    ASSERT_EQ(engine.readLine(PROMPT), "Pellix 1.1b by Anselm KORVEL");
    engine.send("xboard");
    ASSERT_EQ(engine.readLine(PROMPT), FEATURES);
    engine.send("protover 2");
    engine.send("new");
}

// Sends a ping and answers the lines that came before its pong, which proves that every
// earlier command has been handled.
std::vector<std::string> sync(EngineProcess& engine, int n) {
    engine.send("ping " + std::to_string(n));
    std::vector<std::string> seen;
    EXPECT_TRUE(engine.waitFor("pong " + std::to_string(n), SEARCH, &seen));
    if (!seen.empty())
        seen.pop_back();
    return seen;
}

} // namespace

TEST(XboardSession, FeaturesThenPong) {
    EngineProcess engine;
    startXboard(engine);
    engine.send("uci"); // not a command once the protocol is XBoard
    EXPECT_TRUE(sync(engine, 7).empty());
    engine.send("quit");
    EXPECT_EQ(engine.waitExit(PROMPT), 1);
}

// In force mode a move is played without a reply; "go" then makes the engine move for the
// side to move, here Black.
TEST(XboardSession, ForceMoveThenGo) {
    EngineProcess engine;
    startXboard(engine);
    engine.send("sd 2");
    engine.send("force");
    engine.send("e2e4");
    EXPECT_TRUE(sync(engine, 1).empty());
    engine.send("go");
    std::optional<std::string> reply = engine.waitFor("move ", SEARCH);
    ASSERT_TRUE(reply);
    const std::string blackMove = moveOfLine(*reply);
    EXPECT_TRUE(isLegalMove(blackMove, START_FEN, {"e2e4"})) << *reply;

    // Out of force mode each move of the opponent is answered.
    const std::vector<std::string> legal = legalMoveTexts(START_FEN, {"e2e4", blackMove});
    ASSERT_FALSE(legal.empty());
    engine.send(legal.front());
    reply = engine.waitFor("move ", SEARCH);
    ASSERT_TRUE(reply);
    EXPECT_TRUE(isLegalMove(moveOfLine(*reply), START_FEN, {"e2e4", blackMove, legal.front()}));
    engine.send("quit");
    EXPECT_EQ(engine.waitExit(PROMPT), 1);
}

// An illegal move is refused without a word, and the engine moves for the side to move.
TEST(XboardSession, IllegalMoveIsAnsweredForTheSideToMove) {
    EngineProcess engine;
    startXboard(engine);
    engine.send("sd 1");
    engine.send("e2e5");
    std::optional<std::string> reply = engine.waitFor("move ", SEARCH);
    ASSERT_TRUE(reply);
    EXPECT_TRUE(isLegalMove(moveOfLine(*reply), START_FEN)) << *reply;
    engine.send("hint");
    engine.send("result 1-0 {White mates}");
    EXPECT_TRUE(sync(engine, 2).empty());
    engine.send("quit");
}

// "undo" takes back the last move; "setboard" sets a position, here one where White has a
// single legal move.
TEST(XboardSession, UndoAndSetboard) {
    EngineProcess engine;
    startXboard(engine);
    engine.send("sd 1");
    engine.send("force");
    engine.send("e2e4");
    engine.send("undo");
    engine.send("go");
    std::optional<std::string> reply = engine.waitFor("move ", SEARCH);
    ASSERT_TRUE(reply);
    EXPECT_TRUE(isLegalMove(moveOfLine(*reply), START_FEN)) << *reply;

    const std::string fen = "7k/8/8/8/1q6/8/8/K7 w - - 0 1";
    engine.send("force");
    engine.send("setboard " + fen);
    engine.send("go");
    reply = engine.waitFor("move ", SEARCH);
    ASSERT_TRUE(reply);
    EXPECT_EQ(moveOfLine(*reply), "a1a2");
    engine.send("setboard not a fen");
    EXPECT_TRUE(sync(engine, 3).empty());
    engine.send("quit");
}

// The time controls reach the search: a fixed depth reports exactly that many iterations,
// a second per move comes back in about a second, and a clock set by "level" and "time"
// gives a quick move.
TEST(XboardSearch, TimeControls) {
    EngineProcess engine;
    startXboard(engine);
    engine.send("sd 3");
    engine.send("force");
    engine.send("e2e4");
    engine.send("go");
    std::vector<std::string> seen;
    ASSERT_TRUE(engine.waitFor("move ", SEARCH, &seen));
    std::vector<int> depths;
    for (const std::string& line : seen)
        if (line.rfind("move ", 0) != 0)
            depths.push_back(std::stoi(line));
    EXPECT_EQ(depths, (std::vector<int>{1, 2, 3}));

    for (const char* control : {"st 1", "level 0 0:02 0"}) {
        engine.send("new");
        engine.send(control);
        engine.send("time 200");
        engine.send("otim 200");
        const auto start = std::chrono::steady_clock::now();
        engine.send("d2d4");
        std::optional<std::string> reply = engine.waitFor("move ", Millis(5000));
        ASSERT_TRUE(reply) << control;
        EXPECT_TRUE(isLegalMove(moveOfLine(*reply), START_FEN, {"d2d4"})) << *reply;
        EXPECT_LT(std::chrono::steady_clock::now() - start, Millis(1800)) << control;
    }
    engine.send("quit");
}

// "ping" is answered while the engine thinks. "force" ends the engine's turn: the search
// stops and its move is neither sent nor kept, so a following "undo" takes back the
// opponent's move. "quit" during a search lets it send its move, then ends the program.
TEST(XboardSearch, CommandsDuringASearch) {
    EngineProcess engine;
    startXboard(engine);
    engine.send("st 60");
    engine.send("go");
    std::this_thread::sleep_for(Millis(300));
    for (const std::string& line : sync(engine, 9))
        EXPECT_EQ(line.rfind("move", 0), std::string::npos);
    engine.send("force");
    for (const std::string& line : sync(engine, 10))
        EXPECT_EQ(line.rfind("move", 0), std::string::npos);

    engine.send("e2e4"); // White's move; the engine thinks for Black...
    engine.send("st 60");
    engine.send("go");
    std::this_thread::sleep_for(Millis(300));
    engine.send("force"); // ...until the user takes the move back
    engine.send("undo");
    engine.send("sd 2");
    engine.send("go");
    std::optional<std::string> reply = engine.waitFor("move ", SEARCH);
    ASSERT_TRUE(reply);
    EXPECT_TRUE(isLegalMove(moveOfLine(*reply), START_FEN)) << *reply;

    engine.send("st 60");
    engine.send("go");
    std::this_thread::sleep_for(Millis(300));
    engine.send("quit");
    reply = engine.waitFor("move ", PROMPT);
    ASSERT_TRUE(reply);
    EXPECT_EQ(engine.waitExit(PROMPT), 1);
}
