// UCI sessions with the real executable over pipes: what an interface sends and what it must
// get back, including commands that arrive while the engine is thinking.
#include "engine_process.h"
#include "engine_test_support.h"
#include "test_support.h"

#include <fstream>
#include <gtest/gtest.h>
#include <thread>

namespace {

constexpr Millis PROMPT{2000};  // a reply that should come at once
constexpr Millis SEARCH{20000}; // a short search, with room for a slow sanitizer build

// Starts an engine and completes the handshake.
void startUci(EngineProcess& engine) {
    ASSERT_EQ(engine.readLine(PROMPT), "Pellix 1.1b by Anselm KORVEL");
    engine.send("uci");
    ASSERT_TRUE(engine.waitFor("uciok", PROMPT));
}

std::vector<int> reportedDepths(const std::vector<std::string>& lines) {
    std::vector<int> depths;
    for (const std::string& line : lines)
        if (line.rfind("info depth ", 0) == 0)
            depths.push_back(std::stoi(line.substr(11)));
    return depths;
}

} // namespace

TEST(UciSession, HandshakeIsExactlyThreeLines) {
    EngineProcess engine;
    ASSERT_EQ(engine.readLine(PROMPT), "Pellix 1.1b by Anselm KORVEL");
    engine.send("uci");
    engine.send("isready");
    EXPECT_EQ(engine.readLine(PROMPT), "id name Pellix 1.1b");
    EXPECT_EQ(engine.readLine(PROMPT), "id author Anselm KORVEL");
    EXPECT_EQ(engine.readLine(PROMPT), "uciok");
    EXPECT_EQ(engine.readLine(PROMPT), "readyok");
    engine.send("quit");
    EXPECT_EQ(engine.waitExit(PROMPT), 1);
}

// The moves and the FEN reach the board: each position below has one legal move only, so
// the engine's answer shows which position it searched.
TEST(UciSession, PositionThenGoAnswersForThatPosition) {
    EngineProcess engine;
    startUci(engine);
    const std::vector<std::string> moves = {"f2f3", "e7e5", "g2g4"};
    engine.send("position startpos moves f2f3 e7e5 g2g4");
    engine.send("go depth 2");
    std::optional<std::string> best = engine.waitFor("bestmove ", SEARCH);
    ASSERT_TRUE(best);
    EXPECT_TRUE(isLegalMove(moveOfLine(*best), START_FEN, moves)) << *best;

    // With Black's queen on b4, White's king has a single move.
    const std::string fen = "7k/8/8/8/7q/8/8/K7 b - - 0 1";
    engine.send("position fen " + fen + " moves h4b4");
    engine.send("go depth 2");
    best = engine.waitFor("bestmove ", SEARCH);
    ASSERT_TRUE(best);
    EXPECT_EQ(legalMoveTexts(fen, {"h4b4"}), std::vector<std::string>{"a1a2"});
    EXPECT_EQ(moveOfLine(*best), "a1a2");

    // A bad move is skipped and the moves after it are still played.
    engine.send("position startpos moves e2e4 e2e5 e7e5 xyz d1h5");
    engine.send("go depth 1");
    best = engine.waitFor("bestmove ", SEARCH);
    ASSERT_TRUE(best);
    EXPECT_TRUE(isLegalMove(moveOfLine(*best), START_FEN, {"e2e4", "e7e5", "d1h5"})) << *best;
    engine.send("quit");
    EXPECT_EQ(engine.waitExit(PROMPT), 1);
}

// Lines from an interface written for Windows, empty lines, junk and a line longer than any
// command leave the engine answering as before.
TEST(UciSession, BadLinesAreHarmless) {
    EngineProcess engine;
    ASSERT_EQ(engine.readLine(PROMPT), "Pellix 1.1b by Anselm KORVEL");
    engine.sendRaw("\n\r\nuci\r\n");
    ASSERT_TRUE(engine.waitFor("uciok", PROMPT));
    engine.sendRaw(std::string(6000, 'x') + "\nisready\n");
    EXPECT_EQ(engine.readLine(PROMPT), "readyok");
    const char junk[] = "\xff\x01go depth\0 9\n";
    engine.sendRaw(std::string(junk, sizeof junk - 1) + "position fen 8/8\n");
    engine.sendRaw("position startpos moves " + std::string(5000, 'e') + "\nisready\n");
    std::vector<std::string> seen;
    EXPECT_TRUE(engine.waitFor("readyok", PROMPT, &seen));
    engine.send("go depth 1");
    std::optional<std::string> best = engine.waitFor("bestmove ", SEARCH);
    ASSERT_TRUE(best);
    EXPECT_TRUE(isLegalMove(moveOfLine(*best), START_FEN)) << *best;
    engine.send("quit");
    EXPECT_EQ(engine.waitExit(PROMPT), 1);
}

// Standard input closed: the engine neither exits nor spins, and a search that was running
// still finishes and answers.
TEST(UciSession, EndOfInputKeepsTheEngineWaitingQuietly) {
    EngineProcess engine;
    startUci(engine);
    engine.send("go depth 2");
    engine.closeInput();
    std::optional<std::string> best = engine.waitFor("bestmove ", SEARCH);
    ASSERT_TRUE(best);
    const auto cpuTicks = [&] {
        std::ifstream stat("/proc/" + std::to_string(engine.processId()) + "/stat");
        std::string field;
        long ticks = 0;
        for (int i = 1; i <= 15 && stat >> field; ++i)
            if (i == 14 || i == 15)
                ticks += std::stol(field);
        return ticks;
    };
    const long before = cpuTicks();
    std::this_thread::sleep_for(Millis(500));
    EXPECT_EQ(engine.waitExit(Millis(0)), -1) << "the engine ended with its input";
    EXPECT_LT(cpuTicks() - before, 10) << "the engine spins after its input ended";
}

// --- Sessions that need a real search: iterations, polling, stopping. ---------------------

TEST(UciSearch, GoDepthReportsEveryIterationThenMoves) {
    EngineProcess engine;
    startUci(engine);
    engine.send("position startpos moves e2e4");
    engine.send("go depth 3");
    std::vector<std::string> seen;
    std::optional<std::string> best = engine.waitFor("bestmove ", SEARCH, &seen);
    ASSERT_TRUE(best);
    EXPECT_EQ(reportedDepths(seen), (std::vector<int>{1, 2, 3}));
    for (const std::string& line : seen) {
        if (line.rfind("info ", 0) == 0) {
            EXPECT_NE(line.find(" score cp "), std::string::npos) << line;
        }
    }
    EXPECT_TRUE(isLegalMove(moveOfLine(*best), START_FEN, {"e2e4"})) << *best;
}

// "isready" is answered in the middle of an infinite search; "go" is ignored there; "stop"
// ends it with a legal move, and a "quit" during a search lets it answer, then exits 1.
TEST(UciSearch, CommandsDuringAnInfiniteSearch) {
    EngineProcess engine;
    startUci(engine);
    engine.send("position startpos");
    engine.send("go infinite");
    std::this_thread::sleep_for(Millis(300));
    engine.send("isready");
    engine.send("go depth 1");
    std::vector<std::string> seen;
    ASSERT_TRUE(engine.waitFor("readyok", PROMPT, &seen));
    for (const std::string& line : seen)
        EXPECT_EQ(line.rfind("bestmove", 0), std::string::npos);
    std::this_thread::sleep_for(Millis(200));
    engine.send("stop");
    std::optional<std::string> best = engine.waitFor("bestmove ", PROMPT, &seen);
    ASSERT_TRUE(best);
    EXPECT_TRUE(isLegalMove(moveOfLine(*best), START_FEN)) << *best;
    engine.send("isready");
    std::vector<std::string> after;
    ASSERT_TRUE(engine.waitFor("readyok", PROMPT, &after));
    EXPECT_EQ(after.size(), 1u) << "the ignored go searched: " << after.front();

    engine.send("go infinite");
    std::this_thread::sleep_for(Millis(300));
    engine.send("quit");
    best = engine.waitFor("bestmove ", PROMPT);
    ASSERT_TRUE(best);
    EXPECT_EQ(engine.waitExit(PROMPT), 1);
}

// A new position during a search stops it: the old search answers for the old position,
// then the new position is set and the next "go" searches it.
TEST(UciSearch, PositionDuringASearchWaitsForItsMove) {
    EngineProcess engine;
    startUci(engine);
    engine.send("position startpos");
    engine.send("go infinite");
    std::this_thread::sleep_for(Millis(300));
    engine.send("position startpos moves d2d4");
    engine.send("go depth 2");
    std::optional<std::string> first = engine.waitFor("bestmove ", PROMPT);
    ASSERT_TRUE(first);
    EXPECT_TRUE(isLegalMove(moveOfLine(*first), START_FEN)) << *first;
    std::optional<std::string> second = engine.waitFor("bestmove ", SEARCH);
    ASSERT_TRUE(second);
    EXPECT_TRUE(isLegalMove(moveOfLine(*second), START_FEN, {"d2d4"})) << *second;
    engine.send("quit");
    EXPECT_EQ(engine.waitExit(PROMPT), 1);
}
