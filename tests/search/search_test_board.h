// A test engine whose hooks record what the search hands them.
#pragma once

#include "board/make_engine.h"
#include "board/silent_board.h"
#include "search/transposition_table.h"

#include <gtest/gtest.h>
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
    void (*onCommand)(RecordingBoard&) = nullptr; // what reading a command during a search does

    void sendMove() override { sentMove = bestMove; }
    void printSearchInfo(int depth, const PrincipalVariation& pv, std::uint64_t, double) override {
        reports.push_back({depth, pv.scores[0], {pv.moves, pv.moves + pv.count}});
    }
    int readCommand() override {
        if (onCommand)
            onCommand(*this);
        return 1;
    }
};

// A board with a 2 MB transposition table and the position set.
inline std::unique_ptr<RecordingBoard> searchBoard(const std::string& fen) {
    auto board = makeEngine<RecordingBoard>(2);
    EXPECT_EQ(board->setPosition(fen.c_str()), 1) << fen;
    return board;
}

// A fixed-depth think from a cleared table; the move is played on the board.
inline void thinkToDepth(RecordingBoard& board, int depth) {
    board.hashTable->clear();
    board.limits.setTimeMode(TIME_DEPTH, depth);
    board.think();
}
