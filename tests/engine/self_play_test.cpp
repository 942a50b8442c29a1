// A whole game between two engine processes, one speaking UCI and one XBoard, refereed with
// the engine's own library: every move must be legal, and the game must end by mate,
// stalemate, repetition or the fifty-move rule with neither process hanging.
#include "engine_process.h"
#include "test_support.h"

#include <gtest/gtest.h>

namespace {

// Why the game on the referee's board is over, or empty while it goes on.
std::string ending(ChessBoard& board) {
    if (legalMoves(board).empty())
        return board.sideToMoveInCheck() ? "mate" : "stalemate";
    if (board.fiftyCounter >= 100)
        return "fifty moves";
    int seen = 0;
    for (int i = 0; i < board.repetitionTop; ++i)
        seen += board.repetitionStack[i].key == board.hashKey;
    return seen >= 3 ? "repetition" : "";
}

// The rest of the first line that starts with `prefix`: the engine's move.
std::string replyAfter(EngineProcess& engine, const std::string& prefix) {
    const std::optional<std::string> line = engine.waitFor(prefix, SEARCH);
    return line ? line->substr(prefix.size()) : "(no answer)";
}

} // namespace

// The UCI engine plays White with 3 s on each clock, the XBoard engine Black with a clock of
// 3 s for the whole game: about 75 ms a move for both.
TEST(SelfPlay, UciAgainstXboardPlaysALegalGameToItsEnd) {
    EngineProcess white, black;
    for (const char* line : {"uci", "ucinewgame"})
        white.send(line);
    for (const char* line : {"xboard", "new", "level 0 0:03 0"})
        black.send(line);
    auto referee         = boardFrom(START_FEN);
    std::string position = "position startpos", move, over;
    int plies            = 0;
    for (; over.empty(); ++plies) {
        if (plies % 2 == 0) {
            white.send(position);
            white.send("go wtime 3000 btime 3000");
            move = replyAfter(white, "bestmove ");
        } else {
            for (const std::string& line : {std::string("time 300"), std::string("otim 300"), move})
                black.send(line);
            move = replyAfter(black, "move ");
        }
        ASSERT_EQ(referee->playCoordinateMove(move.c_str()), 1)
            << (plies % 2 ? "XBoard" : "UCI") << " engine played " << move << " after " << plies
            << " plies";
        position += (plies ? " " : " moves ") + move;
        over = ending(*referee);
    }
    std::cout << "game over after " << plies << " plies: " << over << "\n";
    white.send("quit");
    black.send("quit");
    EXPECT_EQ(white.waitExit(Millis(2000)), 1);
    EXPECT_EQ(black.waitExit(Millis(2000)), 1);
}
