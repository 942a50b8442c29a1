// A test engine whose hooks record what the search hands them, and a snapshot of everything
// a search must leave as it found it.
#pragma once

#include "tools/silent_board.h"

#include <memory>
#include <string>
#include <vector>

struct Report {
    int depth, score;
    std::vector<Move> line;
};

class RecordingBoard : public SilentBoard {
public:
    std::vector<Report> reports;
    Move sentMove                      = NO_MOVE;
    int commandsRead                   = 0;
    void (*onCommand)(RecordingBoard&) = nullptr; // what reading a command during a search does

    void sendMove() override { sentMove = bestMove; }
    void printSearchInfo(int depth, const PrincipalVariation& pv, std::uint64_t, double) override {
        reports.push_back({depth, pv.scores[0], {pv.moves, pv.moves + pv.count}});
    }
    int readCommand() override {
        ++commandsRead;
        if (onCommand)
            onCommand(*this);
        return 1;
    }
};

// A board with a 2 MB transposition table and the position set.
std::unique_ptr<RecordingBoard> searchBoard(const std::string& fen);
// A fixed-depth think from a cleared table; the move is played on the board.
void thinkToDepth(RecordingBoard& board, int depth);

// Everything the search may touch and must restore: the position with its history records,
// the repetition stack and the game record.
struct BoardSnapshot {
    explicit BoardSnapshot(const ChessBoard& board);
    bool matches(const ChessBoard& board) const;

    Position position;
    std::vector<HistoryRecord> history;
    std::vector<RepetitionEntry> repetitions;
    int gameMoveCount;
};
