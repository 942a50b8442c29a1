// XBoard sessions with the real executable over pipes: the feature handshake, force mode,
// the opponent's moves, take-back, set-up and commands during a search. (Each time control's route
// to the budget is the clock-route test's; a clocked move in a real process, the UCI transcript's.)
#include "engine_process.h"
#include "test_support.h"

#include <gtest/gtest.h>
#include <thread>

namespace {

void startXboard(EngineProcess& engine) {
    ASSERT_EQ(engine.readLine(PROMPT), "Pellix 1.1b by Anselm KORVEL");
    engine.send("xboard");
    ASSERT_EQ(engine.readLine(PROMPT),
              "feature setboard=1 myname=\"Pellix 1.1b\" analyze=0 ping=1 draw=0 sigint=0 "
              "variants=\"normal\" done=1 colors=0");
    engine.send("protover 2");
    engine.send("new");
}

// Sends a ping and answers the lines that came before its pong, which proves that every
// earlier command has been handled.
std::vector<std::string> sync(EngineProcess& engine, int n, Millis timeout = SEARCH) {
    engine.send("ping " + std::to_string(n));
    std::vector<std::string> seen;
    EXPECT_TRUE(engine.waitFor("pong " + std::to_string(n), timeout, &seen));
    if (!seen.empty())
        seen.pop_back();
    return seen;
}

// The engine's reply to the line: the move of its "move" line.
std::string reply(EngineProcess& engine, const std::string& line) {
    engine.send(line);
    const std::optional<std::string> move = engine.waitFor("move ", SEARCH);
    return move ? moveOfLine(*move) : "(none)";
}

} // namespace

// In force mode a move is played without a reply; "go" makes the engine move for the side to
// move, and out of force mode every move of the opponent is answered, an illegal one too (for
// the side to move, the move being refused without a word). "setboard" sets a position, here
// one where White has a single move; a bad one and lines that are no command change and say
// nothing.
TEST(XboardSession, MovesForceGoAndSetboard) {
    EngineProcess engine;
    startXboard(engine);
    engine.send("sd 2");
    engine.send("force");
    engine.send("e2e4");
    EXPECT_TRUE(sync(engine, 1).empty());
    // No first move of Black's makes Nf3 illegal.
    std::vector<std::string> game = {"e2e4", reply(engine, "go"), "g1f3"};
    game.push_back(reply(engine, "g1f3"));
    EXPECT_TRUE(isLegalMove(game.back(), START_FEN, {game.begin(), game.end() - 1}));
    EXPECT_TRUE(isLegalMove(reply(engine, "e2e5"), START_FEN, game));

    engine.send("force");
    engine.send("setboard 7k/8/8/8/1q6/8/8/K7 w - - 0 1");
    for (const char* junk : {"setboard not a fen", "hint", "result 1-0 {White mates}"})
        engine.send(junk);
    EXPECT_TRUE(sync(engine, 3).empty());
    EXPECT_EQ(reply(engine, "go"), "a1a2");
    engine.send("quit");
    EXPECT_EQ(engine.waitExit(PROMPT), 1);
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
    for (int n : {9, 10}) {
        for (const std::string& line : sync(engine, n, POLLED))
            EXPECT_EQ(line.rfind("move", 0), std::string::npos);
        engine.send("force");
    }
    engine.send("e2e4"); // White's move; the engine thinks for Black...
    engine.send("st 60");
    engine.send("go");
    std::this_thread::sleep_for(Millis(300));
    engine.send("force"); // ...until the user takes the move back
    engine.send("undo");
    engine.send("sd 2");
    EXPECT_TRUE(isLegalMove(reply(engine, "go"), START_FEN));

    engine.send("st 60");
    engine.send("go");
    std::this_thread::sleep_for(Millis(300));
    engine.send("quit");
    ASSERT_TRUE(engine.waitFor("move ", PROMPT));
    EXPECT_EQ(engine.waitExit(PROMPT), 1);
}
