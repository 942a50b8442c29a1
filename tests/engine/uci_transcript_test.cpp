// UCI sessions with the real executable over pipes: what an interface sends and what it must
// get back, including commands that arrive while the engine is thinking.
#include "engine_process.h"
#include "test_support.h"

#include <fstream>
#include <gtest/gtest.h>
#include <thread>

namespace {

void startUci(EngineProcess& engine) {
    ASSERT_EQ(engine.readLine(PROMPT), "Pellix 1.1b by Anselm KORVEL");
    engine.send("uci");
    ASSERT_TRUE(engine.waitFor("uciok", PROMPT));
}

// Sends the position and a search, and answers the move of the bestmove line.
std::string bestMove(EngineProcess& engine, const std::string& position, const char* go,
                     std::vector<std::string>* seen = nullptr) {
    engine.send(position);
    engine.send(go);
    const std::optional<std::string> line = engine.waitFor("bestmove ", SEARCH, seen);
    return line ? moveOfLine(*line) : "(none)";
}

} // namespace

// The first line chooses the protocol: anything but "uci" or "xboard" ends the program after
// the banner, empty lines do not decide, and once XBoard is chosen "uci" is no command.
TEST(UciSession, FirstLineChoosesTheProtocol) {
    for (const char* first : {"hello\nuci\n", "isready\n", "uci \n", "XBOARD\n"})
        EXPECT_EQ(runProcess(programCommand("pellix"), first).output,
                  "Pellix 1.1b by Anselm KORVEL\n")
            << first;
    const ProcessResult r = runProcess(programCommand("pellix"), "\n\nxboard\nuci\nping 3\nquit\n",
                                       {{"pellix.ini", SMALL_ENGINE_INI}});
    EXPECT_EQ(r.output.substr(r.output.size() - 7), "pong 3\n") << r.output;
    EXPECT_EQ(r.status, 1);
}

// The handshake is exactly three lines, whatever comes around it: empty lines, lines from an
// interface written for Windows, junk and lines longer than any command leave the engine
// answering as before. "quit" ends it with the exit status 1.
TEST(UciSession, HandshakeAndBadLines) {
    EngineProcess engine;
    ASSERT_EQ(engine.readLine(PROMPT), "Pellix 1.1b by Anselm KORVEL");
    engine.sendRaw("\n\r\nuci\r\n" + std::string(6000, 'x') + "\nisready\n");
    for (const char* expected :
         {"id name Pellix 1.1b", "id author Anselm KORVEL", "uciok", "readyok"})
        EXPECT_EQ(engine.readLine(PROMPT), expected);
    const char junk[] = "\xff\x01go depth\0 9\n";
    engine.sendRaw(std::string(junk, sizeof junk - 1) + "position fen 8/8\n");
    engine.sendRaw("position startpos moves " + std::string(5000, 'e') + "\n");
    EXPECT_TRUE(isLegalMove(bestMove(engine, "isready", "go depth 1"), START_FEN));
    engine.send("quit");
    EXPECT_EQ(engine.waitExit(PROMPT), 1);
}

// The moves and the FEN reach the board: the answers are legal where they were asked, and a
// bad move is skipped while the moves after it are still played. (The reports of each
// iteration, their order and their text are the search and search-report tests'.)
TEST(UciSession, PositionThenGoAnswersForThatPosition) {
    EngineProcess engine;
    startUci(engine);
    // With Black's queen on b4, White's king has a single move.
    EXPECT_EQ(
        bestMove(engine, "position fen 7k/8/8/8/7q/8/8/K7 b - - 0 1 moves h4b4", "go depth 2"),
        "a1a2");
    EXPECT_TRUE(isLegalMove(
        bestMove(engine, "position startpos moves e2e4 e2e5 e7e5 xyz d1h5", "go depth 3"),
        START_FEN, {"e2e4", "e7e5", "d1h5"}));
}

// A Hash the process cannot have (2 GB under a 1.5 GB address-space limit natively; in a
// 32-bit process, as on armhf, the address space is the limit) still gives a table, the
// largest that fits: the search differs from one without a table (Hash=1), and the engine
// plays and quits as usual.
TEST(UciSession, HashTooLargeFallsBackToATableThatFits) {
    const auto nodesAtDepth7 = [](const std::string& hash, const std::string& limit) {
        EngineProcess engine("[Engine]\nHash=" + hash + "\n", limit + programCommand("pellix"));
        startUci(engine);
        std::vector<std::string> seen;
        bestMove(engine, "position startpos moves e2e4 e7e5", "go depth 7", &seen);
        engine.send("quit");
        EXPECT_EQ(engine.waitExit(SEARCH), 1);
        const std::string& last = seen.size() > 1 ? seen[seen.size() - 2] : "";
        return last.substr(0, last.find(" nps")).substr(last.find(" nodes"));
    };
    const char* runner = std::getenv("PELLIX_TEST_RUNNER");
    bool limited       = !testingWindowsBuild() && !(runner && *runner);
#if defined(__SANITIZE_ADDRESS__)
    limited = false; // the sanitizer's own reservations need the address space
#endif
    EXPECT_NE(nodesAtDepth7("2048", limited ? "sh -c 'ulimit -v 1500000; exec \"$0\"' " : ""),
              nodesAtDepth7("1", ""));
}

// Standard input closed: the engine neither exits nor spins, and a search that was running
// still finishes and answers.
TEST(UciSession, EndOfInputKeepsTheEngineWaitingQuietly) {
    EngineProcess engine;
    startUci(engine);
    engine.send("go depth 2");
    engine.closeInput();
    ASSERT_TRUE(engine.waitFor("bestmove ", SEARCH));
    const auto cpuTicks = [&] {
        std::ifstream stat("/proc/" + std::to_string(engine.processId()) + "/stat");
        std::string field;
        long ticks = 0;
        for (int i = 1; i <= 15 && stat >> field; ++i)
            ticks += i >= 14 ? std::stol(field) : 0;
        return ticks;
    };
    const long before = cpuTicks();
    std::this_thread::sleep_for(Millis(500));
    EXPECT_EQ(engine.waitExit(Millis(0)), -1) << "the engine ended with its input";
    EXPECT_LT(cpuTicks() - before, 10) << "the engine spins after its input ended";
}

// The search reads its input as it runs: "isready" is answered in the middle of an infinite
// search, and "stop" ends it with a legal move. (What every command does during a search is
// the command table test's.)
TEST(UciSearch, CommandsDuringASearch) {
    EngineProcess engine;
    startUci(engine);
    engine.send("position startpos");
    engine.send("go infinite");
    std::this_thread::sleep_for(Millis(300));
    engine.send("isready");
    std::vector<std::string> seen;
    ASSERT_TRUE(engine.waitFor("readyok", POLLED, &seen));
    for (const std::string& line : seen)
        EXPECT_EQ(line.rfind("bestmove", 0), std::string::npos);
    engine.send("stop");
    std::optional<std::string> best = engine.waitFor("bestmove ", POLLED);
    ASSERT_TRUE(best);
    EXPECT_TRUE(isLegalMove(moveOfLine(*best), START_FEN)) << *best;
}

// The book is read through a pellix.ini with Windows line ends: the first move comes from it
// at once, without a search report. Out of the book, a move on a clock of one second comes
// well inside that second, after its reports.
TEST(UciSearch, BookMoveThenAMoveOnTheClock) {
    EngineProcess engine(
        "[Engine]\r\nHash=16\r\nBook=1\r\nBookFile=" + std::string(PELLIX_OPENING_BOOK) + "\r\n");
    startUci(engine);
    std::vector<std::string> seen;
    EXPECT_TRUE(
        isLegalMove(bestMove(engine, "isready", "go wtime 60000 btime 60000", &seen), START_FEN));
    EXPECT_EQ(seen, (std::vector<std::string>{"readyok", seen.back()})) << "not a book move";

    const auto start = std::chrono::steady_clock::now();
    seen.clear();
    const std::string fen = "r1bq1rk1/pp2bppp/2n1pn2/3p4/2PP4/2N1PN2/PP3PPP/R2QKB1R w KQ - 0 8";
    EXPECT_TRUE(isLegalMove(
        bestMove(engine, "position fen " + fen, "go wtime 1000 btime 1000", &seen), fen));
    EXPECT_LT(std::chrono::steady_clock::now() - start, Millis(1000));
    EXPECT_GT(seen.size(), 1u) << "no search report";
}
