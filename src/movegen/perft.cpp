// Perft, its statistics variant and divide: counting the leaves of the legal move tree to
// check generation, make and unmake. Each level writes its move list behind its parent's.
// The last ply is counted in perft_leaves.cpp.
#include "board/chess_board.h"
#include "movegen/perft_leaves.h"

std::uint64_t ChessBoard::perft(int depth, int listStart) {
    if (depth <= 0)
        return 1;
    if (listStart + MAX_GENERATED > MOVE_STACK_SIZE)
        return 0; // deeper than any run can reach
    MoveEntry* list    = moveStack + listStart;
    const bool checked = sideToMoveInCheck();
    // At the last ply only the number of legal moves matters.
    if (depth == 1 && !checked && (bbPiece[side()][KING] & bit(kingSquare[side()])))
        return countLegalLeaves(*this);
    const int count     = generateMoves(list, checked);
    std::uint64_t total = 0;
    for (int i = 0; i < count; ++i) {
        const Move m = list[i].move;
        if (makeMove(m))
            total += perft(depth - 1, listStart + count);
        unmakeMove(m);
    }
    inCheck = checked; // the children's generation wrote their own
    return total;
}

void ChessBoard::perftStats(int depth, int listStart) {
    if (depth <= 0) {
        ++perftCounters.nodes;
        return;
    }
    if (listStart + 2 * MAX_GENERATED > MOVE_STACK_SIZE)
        return;
    const bool checked = sideToMoveInCheck();
    if (depth == 1) {
        countLeafMoves(*this, listStart, perftCounters, false);
    } else {
        MoveEntry* list = moveStack + listStart;
        const int count = generateMoves(list, checked);
        for (int i = 0; i < count; ++i) {
            const Move m = list[i].move;
            // A child one ply above the leaves is counted here, where its move is known
            // legal and so the enemy king safe.
            if (makeMove(m)) {
                if (depth > 2)
                    perftStats(depth - 1, listStart + count);
                else if (listStart + count + 2 * MAX_GENERATED <= MOVE_STACK_SIZE)
                    countLeafMoves(*this, listStart + count, perftCounters, true);
            }
            unmakeMove(m);
        }
    }
    inCheck = checked;
}

int ChessBoard::divide(int depth) {
    MoveEntry* list    = moveStack;
    const bool checked = sideToMoveInCheck();
    const int count    = generateMoves(list, checked);
    divideCount        = 0;
    for (int i = 0; i < count && divideCount < MAX_GENERATED; ++i) {
        const Move m = list[i].move;
        // A root move that make rejects is left out of the listing.
        if (makeMove(m)) {
            DivideRow& row = divideRows[divideCount++];
            row.count      = perft(depth - 1, count);
            moveToLongText(m, row.text);
        }
        unmakeMove(m);
    }
    inCheck = checked;
    return divideCount;
}
