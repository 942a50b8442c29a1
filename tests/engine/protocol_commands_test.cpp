// The protocol handlers' effect on the engine, checked in the engine's own fields: the
// time controls of "go", "level", "st", "sd", "time" and "otim", positions and moves, and
// the move line that the console adapter sends.
#include "engine/front_end.h"
#include "engine/uci.h"
#include "engine/xboard.h"
#include "test_support.h"

#include <gtest/gtest.h>

namespace {

// The front end's globals around an engine object of the test's own.
class Handlers : public ::testing::Test {
protected:
    void SetUp() override {
        board = new ChessBoardUCI();
        board->initTables(0);
        board->newGame();
        movesPerSession = movesLeftInSession = forceMode = 0;
    }
    void TearDown() override {
        delete board;
        board    = nullptr;
        protocol = PROTOCOL_NONE;
    }
    void uci(std::string line) { EXPECT_EQ(parseUciCommand(line.data()), 1) << line; }
    void xboard(std::string line) { EXPECT_EQ(parseXboardCommand(line.data()), 1) << line; }
    std::string fen() const {
        char text[128];
        board->toFen(text);
        return text;
    }
};

} // namespace

TEST_F(Handlers, GoReadsItsKeywords) {
    parseGo("go movetime 1000");
    EXPECT_EQ(board->timeMode, TIME_MOVETIME);
    EXPECT_EQ(board->moveTime, 1000000u);

    parseGo("go wtime 300000 btime 290000 winc 2000 binc 1000");
    EXPECT_EQ(board->timeMode, TIME_CLOCK);
    EXPECT_EQ(board->remainingTime[WHITE], 300000.0f);
    EXPECT_EQ(board->remainingTime[BLACK], 290000.0f);
    EXPECT_EQ(board->increment[WHITE], 2000);
    EXPECT_EQ(board->increment[BLACK], 1000);
    EXPECT_EQ(board->movesToGo, 0);

    // Later keywords win; unknown words and their moves are skipped one by one.
    parseGo("go depth 6 wtime 60000 movestogo 12");
    EXPECT_EQ(board->timeMode, TIME_CLOCK);
    EXPECT_EQ(board->movesToGo, 12);
    parseGo("go ponder searchmoves e2e4 d2d4 depth 4");
    EXPECT_EQ(board->timeMode, TIME_DEPTH);
    EXPECT_EQ(board->depthOnlyLimit, 4);
    EXPECT_EQ(board->movesToGo, 0);
    parseGo("go nodes 5000");
    EXPECT_EQ(board->timeMode, TIME_NODES);
    EXPECT_EQ(board->nodeLimit, 5000);
    parseGo("go infinite");
    EXPECT_EQ(board->timeMode, TIME_INFINITE);

    // A missing value ends the parse; clocks that ran out, and overflowing numbers, stay in
    // range instead of turning into hours of thinking.
    parseGo("go depth 3 nodes ");
    EXPECT_EQ(board->timeMode, TIME_DEPTH);
    parseGo("go wtime -150 btime 99999999999");
    EXPECT_EQ(board->remainingTime[WHITE], 0.0f);
    EXPECT_GT(board->remainingTime[BLACK], 2e9f);
    parseGo("go movetime 99999999");
    EXPECT_EQ(board->moveTime, 0xFFFFFFFFu);
    parseGo("go movetime -5");
    EXPECT_EQ(board->moveTime, 0u);
}

TEST_F(Handlers, UciPositionAndSmallCommands) {
    uci("position startpos moves e2e4 e7e5");
    EXPECT_EQ(fen(), "rnbqkbnr/pppp1ppp/8/4p3/4P3/8/PPPP1PPP/RNBQKBNR w KQkq e6 0 2");
    uci("position startpos"); // no blank after startpos: nothing changes
    EXPECT_EQ(fen(), "rnbqkbnr/pppp1ppp/8/4p3/4P3/8/PPPP1PPP/RNBQKBNR w KQkq e6 0 2");
    uci("position fen 4k3/8/8/8/8/8/4P3/4K3 w - - 0 1 moves e2e4 e8d7");
    EXPECT_EQ(fen(), "8/3k4/8/8/4P3/8/8/4K3 w - - 1 2");
    uci("position fen 4k3/8/8/8/8/8/4P3/4K3 b - - 0 1");
    EXPECT_EQ(fen(), "4k3/8/8/8/8/8/4P3/4K3 b - - 0 1");
    uci("position fen 9/8/8 w - - 0 1 moves e2e4"); // rejected: the board stays
    EXPECT_EQ(fen(), "4k3/8/8/8/8/8/4P3/4K3 b - - 0 1");
    uci("ucinewgame");
    EXPECT_EQ(fen(), "rnbqkbnr/pppppppp/8/8/8/8/PPPPPPPP/RNBQKBNR w KQkq - 0 1");

    // "debug" is read inverted, as the engine always has.
    uci("debug on");
    EXPECT_EQ(debugMode, 0);
    uci("debug off");
    EXPECT_EQ(debugMode, 1);
    board->thinking = 1;
    uci("stop");
    EXPECT_EQ(board->stopSearch, 1);
    std::string quit = "quit";
    EXPECT_EQ(parseUciCommand(quit.data()), 0);
    board->thinking = 0;
}

TEST_F(Handlers, XboardTimeControls) {
    xboard("level 40 5 0");
    EXPECT_EQ(movesPerSession, 40);
    EXPECT_EQ(movesLeftInSession, 40);
    EXPECT_EQ(board->movesToGo, 40);
    EXPECT_EQ(board->remainingTime[WHITE], 300000.0f);
    EXPECT_EQ(board->increment[WHITE], 0);
    EXPECT_EQ(board->timeMode, TIME_CLOCK);

    xboard("level 0 2:30 12");
    EXPECT_EQ(movesPerSession, 0);
    EXPECT_EQ(board->remainingTime[WHITE], 150000.0f);
    EXPECT_EQ(board->increment[BLACK], 12000);
    xboard("level 40 5 0.5"); // the increment is read in whole seconds
    EXPECT_EQ(board->increment[WHITE], 0);

    xboard("st 5");
    EXPECT_EQ(board->timeMode, TIME_MOVETIME);
    EXPECT_EQ(board->moveTime, 5000000u);
    xboard("sd 8");
    EXPECT_EQ(board->timeMode, TIME_DEPTH);
    EXPECT_EQ(board->depthOnlyLimit, 8);

    // "time" is the engine's clock, sent while the opponent is to move.
    xboard("force");
    xboard("e2e4");
    xboard("time 6000");
    xboard("otim 4500");
    EXPECT_EQ(board->remainingTime[WHITE], 60000.0f);
    EXPECT_EQ(board->remainingTime[BLACK], 45000.0f);
    xboard("time ");
    EXPECT_EQ(board->remainingTime[WHITE], 60000.0f);

    xboard("new");
    EXPECT_EQ(movesPerSession, 40);
    EXPECT_EQ(board->movesToGo, 40);
    EXPECT_EQ(forceMode, 1) << "new does not leave force mode";
}

TEST_F(Handlers, XboardMovesInForceMode) {
    xboard("force");
    xboard("setboard 8/4P3/8/8/8/8/k7/4K3 w - - 0 1");
    xboard("e7e8q");
    EXPECT_EQ(fen(), "4Q3/8/8/8/8/8/k7/4K3 b - - 0 1");
    xboard("a2b2");
    xboard("undo");
    EXPECT_EQ(fen(), "4Q3/8/8/8/8/8/k7/4K3 b - - 0 1");
    xboard("e1e2"); // not White's turn: refused, nothing played
    xboard("undo");
    xboard("undo"); // nothing left to take back
    EXPECT_EQ(fen(), "8/4P3/8/8/8/8/k7/4K3 w - - 0 1");
    xboard("setboard 8/8/8 w - - 0 1");
    EXPECT_EQ(fen(), "8/4P3/8/8/8/8/k7/4K3 w - - 0 1");
}

// The move line: coordinates, a promotion letter, and the XBoard session count wrapping
// back to the moves per session.
TEST_F(Handlers, SendMoveWritesTheMoveLine) {
    board->setPosition("8/P7/8/8/8/8/k7/4K3 w - - 0 1");
    for (Move m : legalMoves(*board))
        if (movePromotion(m) == KNIGHT)
            board->bestMove = m;
    protocol = PROTOCOL_UCI;
    testing::internal::CaptureStdout();
    board->sendMove();
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "bestmove a7a8n\n");

    protocol           = PROTOCOL_XBOARD;
    movesPerSession    = 40;
    movesLeftInSession = 1;
    board->setPosition("rnbqkbnr/pppppppp/8/8/8/8/PPPPPPPP/RNBQKBNR w KQkq - 0 1");
    for (Move m : legalMoves(*board))
        if (moveFrom(m) == 12 && moveTo(m) == 28)
            board->bestMove = m;
    testing::internal::CaptureStdout();
    board->sendMove();
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "move e2e4\n");
    EXPECT_EQ(movesLeftInSession, 40);
    testing::internal::CaptureStdout();
    board->sendMove();
    testing::internal::GetCapturedStdout();
    EXPECT_EQ(movesLeftInSession, 39);

    board->bestMove = NO_MOVE; // nothing to play: no line under XBoard, the null move under UCI
    testing::internal::CaptureStdout();
    board->sendMove();
    protocol = PROTOCOL_UCI;
    board->sendMove();
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "bestmove 0000\n");
}
