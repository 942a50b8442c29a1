#include "search_test_board.h"

#include <gtest/gtest.h>

std::unique_ptr<RecordingBoard> searchBoard(const std::string& fen, int hashMegabytes) {
    auto board = std::make_unique<RecordingBoard>();
    board->initTables(hashMegabytes);
    board->newGame();
    EXPECT_EQ(board->setPosition(fen.c_str()), 1) << fen;
    return board;
}

BoardSnapshot::BoardSnapshot(const ChessBoard& board)
    : position(board), history(board.history - 1, board.history + board.historyCount),
      repetitions(board.repetitionStack, board.repetitionStack + board.repetitionTop),
      gameMoveCount(board.gameMoveCount) {
    position.history = history.data() + 1;
}

std::string BoardSnapshot::differences(const ChessBoard& board) const {
    std::string found;
    if (!samePosition(position, board))
        found += "position ";
    if (!board.checkConsistency().empty())
        found += "consistency ";
    if (board.repetitionTop != int(repetitions.size()) ||
        std::memcmp(board.repetitionStack, repetitions.data(),
                    repetitions.size() * sizeof(RepetitionEntry)) != 0)
        found += "repetitions ";
    if (board.gameMoveCount != gameMoveCount)
        found += "game ";
    return found;
}

Move findMove(ChessBoard& board, const std::string& coordinates) {
    MoveEntry list[MAX_GENERATED];
    const std::uint8_t wasInCheck = board.inCheck;
    const int count               = board.generateMoves(list, board.sideToMoveInCheck());
    board.inCheck                 = wasInCheck;
    for (int i = 0; i < count; ++i) {
        const Move m = list[i].move;
        char text[8];
        std::snprintf(text, sizeof text, "%c%d%c%d", 'a' + fileOf(moveFrom(m)),
                      1 + rankOf(moveFrom(m)), 'a' + fileOf(moveTo(m)), 1 + rankOf(moveTo(m)));
        if (coordinates == text && (!movePromotion(m) || movePromotion(m) == QUEEN))
            return m;
    }
    return NO_MOVE;
}

void playMoves(ChessBoard& board, const std::vector<std::string>& moves) {
    for (const std::string& text : moves) {
        const Move m = findMove(board, text);
        ASSERT_NE(m, NO_MOVE) << text;
        ASSERT_EQ(board.playGameMove(m), 1) << text;
    }
}

void thinkToDepth(RecordingBoard& board, int depth) {
    board.hashTable.clear();
    board.setTimeMode(TIME_DEPTH, depth);
    board.think();
}
