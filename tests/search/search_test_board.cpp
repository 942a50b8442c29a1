#include "search_test_board.h"

#include <cstring>
#include <gtest/gtest.h>

std::unique_ptr<RecordingBoard> searchBoard(const std::string& fen) {
    auto board = std::make_unique<RecordingBoard>();
    board->initTables(2);
    board->newGame();
    EXPECT_EQ(board->setPosition(fen.c_str()), 1) << fen;
    return board;
}

void thinkToDepth(RecordingBoard& board, int depth) {
    board.hashTable.clear();
    board.setTimeMode(TIME_DEPTH, depth);
    board.think();
}

BoardSnapshot::BoardSnapshot(const ChessBoard& board)
    : position(board), history(board.history, board.history + board.historyCount),
      repetitions(board.repetitionStack, board.repetitionStack + board.repetitionTop),
      gameMoveCount(board.gameMoveCount) {
    position.history = history.data();
}

bool BoardSnapshot::matches(const ChessBoard& board) const {
    return samePosition(position, board) && board.checkConsistency().empty() &&
           board.repetitionTop == int(repetitions.size()) &&
           std::memcmp(board.repetitionStack, repetitions.data(),
                       repetitions.size() * sizeof(RepetitionEntry)) == 0 &&
           board.gameMoveCount == gameMoveCount;
}
