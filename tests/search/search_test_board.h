// A test engine whose hooks record what the search hands them, and a snapshot of everything
// a search must leave as it found it.
#pragma once

#include "tools/silent_board.h"

#include <cstring>
#include <memory>
#include <string>
#include <vector>

struct Report {
    int depth;
    int score;
    std::vector<Move> line;
    std::uint64_t nodes;
};

class RecordingBoard : public SilentBoard {
public:
    std::vector<std::string> hookCalls;
    std::vector<Report> reports;
    Move sentMove    = NO_MOVE;
    int commandsRead = 0;
    // What a command read during the search does; by default nothing.
    void (*onCommand)(RecordingBoard&) = nullptr;

    void hookThinkStarted() override { hookCalls.push_back("thinkStarted"); }
    void hookSearchStarted() override { hookCalls.push_back("searchStarted"); }
    void sendMove() override {
        hookCalls.push_back("sendMove");
        sentMove = bestMove;
    }
    void hookThinkEnded() override { hookCalls.push_back("thinkEnded"); }
    void printSearchInfo(int depth, const PrincipalVariation& pv, std::uint64_t nodes,
                         double) override {
        reports.push_back({depth, pv.scores[0], {pv.moves, pv.moves + pv.count}, nodes});
    }
    int readCommand() override {
        ++commandsRead;
        if (onCommand)
            onCommand(*this);
        return 1;
    }
    int lastScore() const { return reports.empty() ? 0 : reports.back().score; }
};

// A board with a small transposition table and the position set.
std::unique_ptr<RecordingBoard> searchBoard(const std::string& fen, int hashMegabytes = 2);

// Everything the search may touch and must restore: the position with its history records,
// the repetition stack and the game record.
struct BoardSnapshot {
    explicit BoardSnapshot(const ChessBoard& board);
    // Empty when the board matches, else what differs.
    std::string differences(const ChessBoard& board) const;

    Position position;
    std::vector<HistoryRecord> history;
    std::vector<RepetitionEntry> repetitions;
    int gameMoveCount;
};

// The generated move with these coordinates (a promotion to a queen), or NO_MOVE.
Move findMove(ChessBoard& board, const std::string& coordinates);
// Plays the move given in coordinates as a game move; the test fails if it is refused.
void playMoves(ChessBoard& board, const std::vector<std::string>& moves);

// A fixed-depth think from a fresh table; the move is played on the board.
void thinkToDepth(RecordingBoard& board, int depth);
