// Ordering scores for the search's move lists: the hash move, the mate killer, captures by
// value and by exchange, killers of this ply and of two plies back, and the history counts.
// The exchange evaluator itself lives in see.cpp; the search fills the killer tables.
#include "movegen/ordering.h"

#include "board/chess_board.h"

namespace {

// The king is worth nothing here: a king capture is judged by what it takes.
constexpr int ORDER_VALUE[8] = {0, 100, 325, 325, 500, 975, 0, 0};

// Captures and queen promotions change the material; every other move is quiet.
bool isTactical(Move m) {
    return moveCaptured(m) || movePromotion(m) == QUEEN;
}

// Taking something worth more than the taker wins material whatever the defence does.
int valueGain(Move m) {
    return ORDER_VALUE[moveCaptured(m)] - ORDER_VALUE[movePiece(m)];
}

bool sameMove(Move a, Move b) {
    return b && moveIdentity(a) == moveIdentity(b);
}

int captureScore(const ChessBoard& board, Move m) {
    const int gain = valueGain(m);
    if (gain >= 1)
        return gain + WINNING_CAPTURE;
    const int exchange = board.see(m);
    if (exchange > 0)
        return exchange + WINNING_CAPTURE;
    return exchange == 0 ? EVEN_CAPTURE : exchange + LOSING_CAPTURE;
}

int quietScore(const ChessBoard& board, Move m, int ply) {
    if (sameMove(m, board.killerMove1[ply]))
        return KILLER_1_SCORE;
    if (sameMove(m, board.killerMove2[ply]))
        return KILLER_2_SCORE;
    const int history = board.historyTable[board.sideToMove][moveFrom(m)][moveTo(m)] + HISTORY_BASE;
    if (ply < 2)
        return history;
    if (sameMove(m, board.killerMove1[ply - 2]))
        return OLD_KILLER_1_SCORE;
    if (sameMove(m, board.killerMove2[ply - 2]))
        return OLD_KILLER_2_SCORE;
    return history;
}

} // namespace

void ChessBoard::scoreMoves(MoveEntry* list, int count, Move hashMove, int ply) const {
    // The killer tables have MAX_PLY rows; a node outside them orders without killers.
    const bool killers = ply >= 0 && ply < MAX_PLY;
    for (int i = 0; i < count; ++i) {
        const Move m = list[i].move;
        int score;
        if (sameMove(m, hashMove))
            score = HASH_MOVE_SCORE;
        else if (killers && sameMove(m, mateKiller[ply]))
            score = MATE_KILLER_SCORE;
        else if (isTactical(m))
            score = captureScore(*this, m);
        else if (killers)
            score = quietScore(*this, m, ply);
        else
            score = historyTable[sideToMove][moveFrom(m)][moveTo(m)] + HISTORY_BASE;
        list[i].score = score;
    }
}

void ChessBoard::scoreCaptures(MoveEntry* list, int count, Move hashMove) const {
    for (int i = 0; i < count; ++i) {
        const Move m  = list[i].move;
        list[i].score = QUIESCENCE_SKIP;
        if (!isTactical(m))
            continue;
        const int gain = valueGain(m);
        int score      = gain + WINNING_CAPTURE;
        if (gain < 1) {
            const int exchange = see(m);
            if (exchange < 0)
                continue;
            score = exchange + WINNING_CAPTURE;
        }
        list[i].score = sameMove(m, hashMove) ? score + HASH_MOVE_SCORE : score;
    }
}

// An exchange sort over the slice: each entry is compared with every earlier one and the two
// swap when it scores strictly higher. Ties keep whatever order that leaves.
void ChessBoard::sortMoves(MoveEntry* list, int first, int count) {
    const int end = first + count;
    for (int i = first + 1; i < end; ++i)
        for (int j = first; j < i; ++j)
            if (list[i].score > list[j].score) {
                const MoveEntry swapped = list[i];
                list[i]                 = list[j];
                list[j]                 = swapped;
            }
}
