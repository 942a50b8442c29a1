// The protocols' command tables seen through the front end: what every command does when it
// arrives during a search, and the values "go" and "level" read into the engine's fields.
#include "engine/front_end.h"
#include "engine/uci.h"
#include "engine/xboard.h"
#include "test_support.h"

#include <gtest/gtest.h>
#include <set>

namespace {

// A line for every row of both tables; the test fails for a row that has none.
const char* const UCI_LINES[]    = {"quit",
                                    "uci",
                                    "isready",
                                    "ucinewgame",
                                    "stop",
                                    "perft 2",
                                    "divide 2",
                                    "go depth 3",
                                    "debug on",
                                    "position startpos moves e2e4",
                                    "setoption name Hash value 1"};
const char* const XBOARD_LINES[] = {
    "quit",          "xboard",       "undo",
    "white",         "black",        "force",
    "random",        "setboard",     "go",
    "new",           "computer",     "easy",
    "hard",          "post",         "nopost",
    "accepted ping", "analyze",      "protover 2",
    "perft 2",       "divide 2",     "time 1000",
    "otim 900",      "ping 5",       "st 5",
    "sd 4",          "level 40 5 0", "setboard 8/8/8/8/8/8/8/K6k w - - 0 1",
    "e2e4",          "hint"};

// What a running search may read or stand on: the board and the time controls.
std::string searchInputs(const ChessBoard& engine) {
    char fen[128];
    engine.toFen(fen);
    return std::string(fen) + " " + std::to_string(engine.timeMode) + " " +
           std::to_string(engine.depthOnlyLimit) + " " + std::to_string(engine.moveTime) + " " +
           std::to_string(engine.remainingTime[WHITE]) + " " +
           std::to_string(engine.remainingTime[BLACK]) + " " + std::to_string(engine.movesToGo);
}

// A front end of the protocol whose engine is marked as searching; the lines go straight
// to the dispatcher.
struct Searching {
    explicit Searching(int protocol) : frontEnd(CommandSource{nullptr, nullptr}) {
        frontEnd.protocol = protocol;
        frontEnd.board    = std::make_unique<ChessBoardUCI>(frontEnd);
        frontEnd.board->initTables(1);
        frontEnd.board->newGame();
        frontEnd.board->playCoordinateMove("d2d4");
        frontEnd.board->thinking = 1;
    }
    // Dispatches the line and answers what it sent at once.
    std::string send(const char* line) {
        testing::internal::CaptureStdout();
        frontEnd.dispatch(line);
        return testing::internal::GetCapturedStdout();
    }
    FrontEnd frontEnd;
};

void expectEveryRowDuringASearch(int protocol, std::span<const char* const> lines) {
    const CommandTable table = commandsOf(protocol);
    std::set<const CommandRow*> covered;
    for (const char* line : lines) {
        Searching searching(protocol);
        ChessBoard& engine       = *searching.frontEnd.board;
        const std::string before = searchInputs(engine);
        const CommandRow& row    = findCommand(table, line);
        covered.insert(&row);
        const std::string output = searching.send(line);
        const bool queued        = !searching.frontEnd.waiting.empty();

        EXPECT_EQ(searchInputs(engine), before) << line << ": changed what the search reads";
        switch (row.duringSearch) {
        case DuringSearch::ANSWER:
            EXPECT_FALSE(queued) << line;
            break;
        case DuringSearch::IGNORE:
            EXPECT_FALSE(queued) << line;
            EXPECT_EQ(output, "") << line;
            EXPECT_EQ(engine.stopSearch, 0) << line;
            break;
        case DuringSearch::QUEUE:
        case DuringSearch::STOP:
        case DuringSearch::STOP_SILENT:
            EXPECT_TRUE(queued) << line;
            EXPECT_EQ(output, "") << line;
            EXPECT_EQ(engine.stopSearch, row.duringSearch != DuringSearch::QUEUE) << line;
            EXPECT_EQ(searching.frontEnd.dropSearchMove,
                      row.duringSearch == DuringSearch::STOP_SILENT)
                << line;
            break;
        }
        // Once the search has been told to stop, even an answer waits its turn.
        engine.stopSearch = 1;
        EXPECT_EQ(searching.send(protocol == PROTOCOL_UCI ? "isready" : "ping 1"), "") << line;
        // When the search is over, what waited runs, in order (unless the line was "quit").
        engine.thinking   = 0;
        engine.stopSearch = 0;
        testing::internal::CaptureStdout();
        searching.frontEnd.runWaitingCommands();
        const std::string after = testing::internal::GetCapturedStdout();
        if (searching.frontEnd.quitRequested)
            continue;
        EXPECT_TRUE(searching.frontEnd.waiting.empty()) << line;
        EXPECT_NE(after.find(protocol == PROTOCOL_UCI ? "readyok" : "pong 1"), std::string::npos)
            << line;
    }
    EXPECT_EQ(covered.size(), table.size()) << "a row without a line";
}

} // namespace

TEST(CommandTable, UciCommandsDuringASearch) {
    expectEveryRowDuringASearch(PROTOCOL_UCI, UCI_LINES);
}

TEST(CommandTable, XboardCommandsDuringASearch) {
    expectEveryRowDuringASearch(PROTOCOL_XBOARD, XBOARD_LINES);
}

// Later keywords win and unknown words are skipped one by one; a missing value ends the
// parse; clocks that ran out and overflowing numbers stay in range.
TEST(CommandTable, GoReadsItsKeywords) {
    auto engine = boardFrom(START_FEN);
    parseGo(*engine, "go depth 6 wtime 300000 btime 290000 winc 2000 movestogo 12");
    EXPECT_EQ(engine->timeMode, TIME_CLOCK);
    EXPECT_EQ(engine->remainingTime[BLACK], 290000.0f);
    EXPECT_EQ(engine->increment[WHITE], 2000);
    EXPECT_EQ(engine->movesToGo, 12);
    parseGo(*engine, "go ponder searchmoves e2e4 d2d4 depth 4 nodes ");
    EXPECT_EQ(engine->timeMode, TIME_DEPTH);
    EXPECT_EQ(engine->depthOnlyLimit, 4);
    EXPECT_EQ(engine->movesToGo, 0);
    parseGo(*engine, "go wtime -150 btime 99999999999 infinite");
    EXPECT_EQ(engine->timeMode, TIME_INFINITE);
    EXPECT_EQ(engine->remainingTime[WHITE], 0.0f);
    EXPECT_GT(engine->remainingTime[BLACK], 2e9f);
    parseGo(*engine, "go movetime 99999999");
    EXPECT_EQ(engine->moveTime, 0xFFFFFFFFu);
    parseGo(*engine, "go nodes 5000 movetime -5");
    EXPECT_EQ(engine->nodeLimit, 5000);
    EXPECT_EQ(engine->moveTime, 0u);
}

// "position startpos" with nothing after it leaves the board as it was; a FEN's own fields
// after the placement are skipped as moves, and the moves after them are played.
TEST(CommandTable, PositionTakesMovesOnlyAfterStartposAndAFen) {
    auto engine = boardFrom(START_FEN);
    parsePosition(*engine, "position startpos moves e2e4 e7e5");
    parsePosition(*engine, "position startpos");
    char fen[128];
    engine->toFen(fen);
    EXPECT_STREQ(fen, "rnbqkbnr/pppp1ppp/8/4p3/4P3/8/PPPP1PPP/RNBQKBNR w KQkq e6 0 2");
    parsePosition(*engine, "position fen 4k3/8/8/8/8/8/4P3/4K3 w - - 0 1 moves e2e4 e8d7");
    engine->toFen(fen);
    EXPECT_STREQ(fen, "8/3k4/8/8/4P3/8/8/4K3 w - - 1 2");
}

// "level MPS BASE INC": the base in minutes or minutes:seconds on the clock of the side to
// move, the increment in whole seconds.
TEST(CommandTable, LevelSetsTheSessionAndTheClock) {
    FrontEnd frontEnd(CommandSource{nullptr, nullptr});
    frontEnd.board = std::make_unique<ChessBoardUCI>(frontEnd);
    frontEnd.board->initTables(0);
    frontEnd.board->newGame();
    ChessBoard& engine = *frontEnd.board;
    parseLevel(frontEnd, "level 40 5 0");
    EXPECT_EQ(frontEnd.movesLeftInSession, 40);
    EXPECT_EQ(engine.movesToGo, 40);
    EXPECT_EQ(engine.remainingTime[WHITE], 300000.0f);
    EXPECT_EQ(engine.timeMode, TIME_CLOCK);
    parseLevel(frontEnd, "level 0 2:30 12");
    EXPECT_EQ(frontEnd.movesPerSession, 0);
    EXPECT_EQ(engine.remainingTime[WHITE], 150000.0f);
    EXPECT_EQ(engine.increment[BLACK], 12000);
    parseLevel(frontEnd, "level 40 5 0.5");
    EXPECT_EQ(engine.increment[WHITE], 0);
}
