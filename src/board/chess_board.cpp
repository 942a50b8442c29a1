// The engine object's life: construction (geometry tables), the one-time allocation of its
// history stack, keys and transposition table, and their release.
#include "board/chess_board.h"

#include <cstring>

ChessBoard::ChessBoard() : Position{}, hashTable(nullptr, nullptr) {
    resizeHashTable(0);
    initGeometry();
    // One record in front of the first: the search reads and writes "the record of the move
    // that led here", which at a root without moves is this spare one.
    historyStore.reset(new HistoryRecord[HISTORY_CAPACITY + 1]());
    history = historyStore.get() + 1;
    clearOrderingTables();
    std::memset(takenPieces, 0, sizeof takenPieces);
    std::memset(moveStack, 0, sizeof moveStack);
    std::memset(repetitionStack, 0, sizeof repetitionStack);
    std::memset(gameMoves, 0, sizeof gameMoves);
    std::memset(divideRows, 0, sizeof divideRows);
}

ChessBoard::~ChessBoard() {
    releaseTables();
}

void ChessBoard::initTables(int hashMegabytes_) {
    std::memset(historyStore.get(), 0, sizeof(HistoryRecord) * (HISTORY_CAPACITY + 1));
    initZobrist();
    hashMegabytes = hashMegabytes_;
    resizeHashTable(std::uint32_t(hashMegabytes_ < 0 ? 0 : hashMegabytes_));
}

void ChessBoard::releaseTables() {
    releaseHashTable();
}
