// A whole game between two engine processes, one speaking UCI and one XBoard, refereed with
// the engine's own library: every move must be legal, and the game must end by mate,
// stalemate, repetition or the fifty-move rule with neither process hanging.
#include "engine_process.h"
#include "test_support.h"

#include <gtest/gtest.h>

namespace {

// The referee: the game so far on the engine's own board.
struct Referee {
    std::unique_ptr<SilentBoard> board = boardFrom(START_FEN);
    std::vector<std::string> moves;

    bool play(const std::string& text) {
        moves.push_back(text);
        return board->playCoordinateMove(text.c_str()) == 1;
    }
    // Why the game is over, or empty while it goes on.
    std::string result() {
        if (legalMoves(*board).empty())
            return board->sideToMoveInCheck() ? "mate" : "stalemate";
        if (board->fiftyCounter >= 100)
            return "fifty moves";
        int seen = 0;
        for (int i = 0; i < board->repetitionTop; ++i)
            seen += board->repetitionStack[i].key == board->hashKey;
        return seen >= 3 ? "repetition" : "";
    }
};

// The UCI engine plays White with 3 s on each clock, the XBoard engine Black with a clock
// of 3 s for the whole game: about 75 ms a move for both.
class Match {
public:
    Match() {
        white.send("uci");
        white.send("ucinewgame");
        black.send("xboard");
        black.send("new");
        black.send("level 0 0:03 0");
    }

    std::string whiteMove() {
        std::string position = "position startpos";
        if (!referee.moves.empty())
            position += " moves";
        for (const std::string& m : referee.moves)
            position += " " + m;
        white.send(position);
        white.send("go wtime 3000 btime 3000");
        std::optional<std::string> line = white.waitFor("bestmove ", SEARCH);
        return line ? line->substr(9) : "(no answer)";
    }
    std::string blackMove() {
        black.send("time 300");
        black.send("otim 300");
        black.send(referee.moves.back());
        std::optional<std::string> line = black.waitFor("move ", SEARCH);
        return line ? line->substr(5) : "(no answer)";
    }

    EngineProcess white, black;
    Referee referee;
};

} // namespace

TEST(SelfPlay, UciAgainstXboardPlaysALegalGameToItsEnd) {
    Match match;
    std::string ending;
    while (ending.empty()) {
        const bool whiteToMove = match.referee.board->sideToMove == WHITE;
        const std::string move = whiteToMove ? match.whiteMove() : match.blackMove();
        ASSERT_TRUE(match.referee.play(move))
            << (whiteToMove ? "UCI" : "XBoard") << " engine played " << move << " after "
            << match.referee.moves.size() << " plies";
        ending = match.referee.result();
    }
    std::cout << "game over after " << match.referee.moves.size() << " plies: " << ending << "\n";
    match.white.send("quit");
    match.black.send("quit");
    EXPECT_EQ(match.white.waitExit(Millis(2000)), 1);
    EXPECT_EQ(match.black.waitExit(Millis(2000)), 1);
}
