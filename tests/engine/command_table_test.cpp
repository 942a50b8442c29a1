// The protocols' command tables seen through the front end: what every command does when it
// arrives during a search, and the values "go", "position" and "level" read.
#include "engine/front_end.h"
#include "engine/uci.h"
#include "engine/xboard.h"
#include "test_support.h"

#include <gtest/gtest.h>
#include <set>

namespace {

// A line for every row of both tables; the test fails for a row that has none.
// clang-format off
const char* const UCI_LINES[] = {"quit", "uci", "isready", "ucinewgame", "stop", "perft 2",
    "divide 2", "go depth 3", "debug on", "position startpos moves e2e4", "setoption name x"};
const char* const XBOARD_LINES[] = {"quit", "xboard", "undo", "white", "black", "force",
    "random", "setboard", "go", "new", "computer", "easy", "hard", "post", "nopost",
    "accepted ping", "analyze", "protover 2", "perft 2", "divide 2", "time 1000", "otim 900",
    "ping 5", "st 5", "sd 4", "level 40 5 0", "setboard 8/8/8/8/8/8/8/K6k w - - 0 1", "e2e4",
    "hint"};
// clang-format on

// A front end of the protocol whose engine is set up, and which reads no input.
struct Session {
    explicit Session(int protocol) : frontEnd(CommandSource{nullptr, nullptr}) {
        frontEnd.protocol = protocol;
        frontEnd.createEngine(1);
    }
    // Dispatches the line and answers what it sent at once.
    std::string send(const char* line) {
        testing::internal::CaptureStdout();
        frontEnd.dispatch(line);
        return testing::internal::GetCapturedStdout();
    }
    // What a running search reads or stands on: the board and the time controls.
    std::string searchInputs() const {
        const SearchLimits& e = frontEnd.board->limits;
        char fen[128];
        frontEnd.board->toFen(fen);
        return std::string(fen) + " " + std::to_string(e.timeMode) + " " +
               std::to_string(e.depthOnlyLimit) + " " + std::to_string(e.moveTime) + " " +
               std::to_string(e.remainingTime[WHITE]) + " " + std::to_string(e.movesToGo);
    }
    FrontEnd frontEnd;
};

void expectEveryRowDuringASearch(int protocol, std::span<const char* const> lines) {
    const CommandTable table = commandsOf(protocol);
    std::set<const CommandRow*> covered;
    for (const char* line : lines) {
        Session session(protocol);
        ChessBoard& engine       = *session.frontEnd.board;
        engine.thinking          = 1;
        const std::string before = session.searchInputs();
        const CommandRow& row    = findCommand(table, line);
        covered.insert(&row);
        const std::string output = session.send(line);
        const bool queued        = !session.frontEnd.waiting.empty();
        const DuringSearch kind  = row.duringSearch;

        EXPECT_EQ(session.searchInputs(), before) << line << ": changed what the search reads";
        EXPECT_EQ(queued, kind != DuringSearch::ANSWER && kind != DuringSearch::IGNORE) << line;
        if (kind != DuringSearch::ANSWER) {
            EXPECT_EQ(output, "") << line;
            EXPECT_EQ(engine.stopSearch,
                      kind == DuringSearch::STOP || kind == DuringSearch::STOP_SILENT)
                << line;
            EXPECT_EQ(session.frontEnd.dropSearchMove, kind == DuringSearch::STOP_SILENT) << line;
        }
        // Once the search has been told to stop, even an answer waits its turn; when the
        // search is over, what waited runs in order (unless the line was "quit").
        engine.stopSearch = 1;
        EXPECT_EQ(session.send(protocol == PROTOCOL_UCI ? "isready" : "ping 1"), "") << line;
        engine.thinking   = 0;
        engine.stopSearch = 0;
        testing::internal::CaptureStdout();
        session.frontEnd.runWaitingCommands();
        const std::string after = testing::internal::GetCapturedStdout();
        const bool answered =
            after.find(protocol == PROTOCOL_UCI ? "readyok" : "pong 1") != std::string::npos;
        EXPECT_TRUE(answered || session.frontEnd.quitRequested) << line;
    }
    EXPECT_EQ(covered.size(), table.size()) << "a row without a line";
}

} // namespace

TEST(CommandTable, EveryCommandDuringASearch) {
    expectEveryRowDuringASearch(PROTOCOL_UCI, UCI_LINES);
    expectEveryRowDuringASearch(PROTOCOL_XBOARD, XBOARD_LINES);
}

// "go": later keywords win, unknown words are skipped one by one, a missing value ends the
// parse, and clocks that ran out or overflow stay in range. "position startpos" with nothing
// after it leaves the board as it was.
TEST(CommandTable, GoPositionAndLevelReadTheirWords) {
    auto engine          = boardFrom(START_FEN);
    SearchLimits& limits = engine->limits;
    parseGo(limits, "go depth 6 wtime 300000 btime 290000 winc 2000 movestogo 12");
    EXPECT_EQ(limits.timeMode, TIME_CLOCK);
    EXPECT_EQ(limits.remainingTime[BLACK], 290000.0f);
    EXPECT_EQ(limits.increment[WHITE], 2000);
    EXPECT_EQ(limits.movesToGo, 12);
    parseGo(limits, "go ponder searchmoves e2e4 depth 4 nodes ");
    EXPECT_TRUE(limits.depthOnlyLimit == 4 && limits.movesToGo == 0);
    EXPECT_EQ(limits.timeMode, TIME_DEPTH);
    parseGo(limits, "go ponder");
    EXPECT_EQ(limits.timeMode, TIME_DEPTH) << "a go without a mode keeps the last one";
    parseGo(limits, "go wtime -150 btime 99999999999 movetime 99999999 infinite");
    EXPECT_EQ(limits.timeMode, TIME_INFINITE);
    EXPECT_EQ(limits.remainingTime[WHITE], 0.0f);
    EXPECT_GT(limits.remainingTime[BLACK], 2e9f);
    EXPECT_EQ(limits.moveTime, 0xFFFFFFFFu);

    char fen[128];
    parsePosition(*engine, "position startpos moves e2e4 e7e5");
    parsePosition(*engine, "position startpos");
    engine->toFen(fen);
    EXPECT_STREQ(fen, "rnbqkbnr/pppp1ppp/8/4p3/4P3/8/PPPP1PPP/RNBQKBNR w KQkq e6 0 2");
}

// The clock route from each protocol to the budget, with unequal clocks and Black to move:
// UCI's wtime and btime by name, increments kept from one "go" to the next; XBoard's "time"
// (sent while the opponent is to move) on the engine's own clock, "otim" on the other, and
// "level MPS BASE INC" (minutes or minutes:seconds, whole seconds) on the side to move's,
// and "st" a fixed time a move.
TEST(ClockRoute, EachProtocolFeedsTheClockOfTheSideToMove) {
    Session uci(PROTOCOL_UCI);
    ChessBoard& engine = *uci.frontEnd.board;
    uci.send("position startpos moves e2e4");
    parseGo(engine.limits, "go wtime 30000 btime 90000 winc 100 binc 3000");
    engine.computeTimeLimit();
    EXPECT_EQ(engine.timeLimit, 3000u * 1000 + 90000u * 1000 / 40);
    parseGo(engine.limits, "go wtime 1000 btime 40000");
    engine.computeTimeLimit();
    EXPECT_EQ(engine.timeLimit, 3000u * 1000 + 40000u * 1000 / 40);

    Session xboard(PROTOCOL_XBOARD);
    ChessBoard& black = *xboard.frontEnd.board;
    for (const char* line : {"new", "force", "time 3000", "otim 9000", "e2e4"})
        xboard.send(line);
    ASSERT_EQ(black.side(), BLACK);
    black.computeTimeLimit();
    EXPECT_EQ(black.timeLimit, 30000u * 1000 / 40) << "the engine's own clock is Black's";
    xboard.send("level 30 2:30 0.5");
    EXPECT_TRUE(black.limits.remainingTime[WHITE] == 90000.0f &&
                black.limits.increment[WHITE] == 0);
    black.computeTimeLimit();
    EXPECT_EQ(black.timeLimit, 150000u * 1000 / 30);
    xboard.send("level 40 5 12.5");
    EXPECT_TRUE(black.limits.increment[BLACK] == 12000 && black.limits.timeMode == TIME_CLOCK);
    xboard.send("st 2");
    black.computeTimeLimit();
    EXPECT_EQ(black.timeLimit, 2000000u) << "st: seconds per move";
}

// "level 3 ...": the searches get 3, 2 and 1 moves to go, and then a new session of 3.
TEST(ClockRoute, XboardSessionCountsDownAcrossItsBoundary) {
    Session session(PROTOCOL_XBOARD);
    ChessBoard& engine = *session.frontEnd.board;
    session.send("new");
    session.send("level 3 0:10 0");
    session.send("sd 1");
    std::vector<int> movesToGo;
    for (int move = 0; move < 4; ++move) {
        char text[8];
        ChessBoard::moveToCoordinates(legalMoves(engine).at(0), text);
        const std::string reply = session.send(text); // the engine answers for Black
        EXPECT_NE(reply.find("move "), std::string::npos) << text;
        movesToGo.push_back(engine.limits.movesToGo);
    }
    EXPECT_EQ(movesToGo, (std::vector<int>{3, 2, 1, 3}));
}

// The engine's own move line keeps the letter of an under-promotion in both protocols.
TEST(ClockRoute, TheMoveLineNamesAnUnderPromotion) {
    for (int protocol : {PROTOCOL_UCI, PROTOCOL_XBOARD}) {
        Session session(protocol);
        ChessBoard& engine = *session.frontEnd.board;
        ASSERT_TRUE(engine.setPosition("8/4P3/8/8/8/8/k7/7K w - - 0 1"));
        engine.bestMove = findMove(engine, "e7e8n");
        testing::internal::CaptureStdout();
        session.frontEnd.sendMove(engine);
        EXPECT_EQ(testing::internal::GetCapturedStdout(),
                  protocol == PROTOCOL_UCI ? "bestmove e7e8n\n" : "move e7e8n\n");
    }
}
