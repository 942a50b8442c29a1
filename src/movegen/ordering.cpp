// Ordering scores for the search's move lists: the hash move, the mate killer, captures by
// value and by exchange, killers of this ply and of two plies back, and the history counts.
// The exchange evaluator itself lives in see.cpp; the search fills the killer tables.
#include "movegen/ordering.h"

#include "board/chess_board.h"

#include <cstring>

namespace {

// The king is worth nothing here: a king capture is judged by what it takes.
constexpr int ORDER_VALUE[8] = {0, 100, 325, 325, 500, 975, 0, 0};
// The exchange evaluator's values.
constexpr int SEE_CEILING_VALUE[8] = {0, 100, 325, 325, 500, 975, 5000, 0};

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

// What a move list's identities are compared with: the identity of a stored move, or, for
// no move, a value no identity takes. One comparison per move then does sameMove's work.
constexpr Move NO_IDENTITY = ~Move{0};
constexpr Move identityKey(Move stored) {
    return stored ? moveIdentity(stored) : NO_IDENTITY;
}

// No exchange wins more than its first capture: the captured piece and what a pawn
// promotes to. Both bands of exchange scores grow with the exchange, so this bounds the
// score the move will settle at.
int exchangeCeiling(Move m) {
    const Piece promotion = movePromotion(m);
    return SEE_CEILING_VALUE[moveCaptured(m)] +
           (promotion ? SEE_CEILING_VALUE[promotion] - 100 : 0) + WINNING_CAPTURE;
}

// The killers a node's quiet moves are matched against, read once per list: the stores of
// the scores could otherwise alias them and force a reload for every move. A killer that
// does not apply (no row, or fewer than two plies played) matches nothing. Each is kept as
// its identity key.
struct Killers {
    Move mate = NO_IDENTITY, first = NO_IDENTITY, second = NO_IDENTITY;
    Move oldFirst = NO_IDENTITY, oldSecond = NO_IDENTITY;
    const std::int32_t (*history)[64];

    Killers(const ChessBoard& board, int ply) : history(board.historyTable[board.sideToMove]) {
        if (ply < 0 || ply >= MAX_PLY)
            return;
        mate   = identityKey(board.mateKiller[ply]);
        first  = identityKey(board.killerMove1[ply]);
        second = identityKey(board.killerMove2[ply]);
        if (ply >= 2) {
            oldFirst  = identityKey(board.killerMove1[ply - 2]);
            oldSecond = identityKey(board.killerMove2[ply - 2]);
        }
    }

    int quietScore(Move m) const {
        const Move id = moveIdentity(m);
        if (id == first)
            return KILLER_1_SCORE;
        if (id == second)
            return KILLER_2_SCORE;
        if (id == oldFirst)
            return OLD_KILLER_1_SCORE;
        if (id == oldSecond)
            return OLD_KILLER_2_SCORE;
        return history[moveFrom(m)][moveTo(m)] + HISTORY_BASE;
    }
};

} // namespace

void ChessBoard::scoreMovesDeferred(MoveEntry* list, int count, Move hashMove, int ply) const {
    // The killer tables have MAX_PLY rows; a node outside them orders without killers.
    const Killers killers(*this, ply);
    const Move hashId = identityKey(hashMove);
    for (int i = 0; i < count; ++i) {
        const Move m = list[i].move;
        int score;
        if (moveIdentity(m) == hashId)
            score = HASH_MOVE_SCORE;
        else if (moveIdentity(m) == killers.mate)
            score = MATE_KILLER_SCORE;
        else if (isTactical(m)) {
            if (valueGain(m) >= 1) {
                score = valueGain(m) + WINNING_CAPTURE;
            } else {
                list[i] = {m | EXCHANGE_PENDING_MOVES, exchangeCeiling(m)};
                continue;
            }
        } else
            score = killers.quietScore(m);
        list[i].score = score;
    }
}

void ChessBoard::scoreMoves(MoveEntry* list, int count, Move hashMove, int ply) const {
    scoreMovesDeferred(list, count, hashMove, ply);
    for (int i = 0; i < count; ++i)
        settleExchange(list[i]);
}

void ChessBoard::settleExchange(MoveEntry& entry) const {
    const Move flags = entry.move & EXCHANGE_PENDING;
    if (!flags)
        return;
    entry.move &= ~EXCHANGE_PENDING;
    const int exchange = see(entry.move);
    if (flags == EXCHANGE_PENDING_MOVES)
        entry.score = exchange > 0    ? exchange + WINNING_CAPTURE
                      : exchange == 0 ? EVEN_CAPTURE
                                      : exchange + LOSING_CAPTURE;
    else
        entry.score = exchange < 0 ? QUIESCENCE_SKIP : exchange + WINNING_CAPTURE;
}

void ChessBoard::scoreCapturesDeferred(MoveEntry* list, int count, Move hashMove) const {
    for (int i = 0; i < count; ++i) {
        const Move m  = list[i].move;
        list[i].score = QUIESCENCE_SKIP;
        if (!isTactical(m))
            continue;
        const int gain = valueGain(m);
        int score      = gain + WINNING_CAPTURE;
        if (gain < 1) {
            if (!sameMove(m, hashMove)) {
                list[i] = {m | EXCHANGE_PENDING_CAPTURES, exchangeCeiling(m)};
                continue;
            }
            const int exchange = see(m);
            if (exchange < 0)
                continue;
            score = exchange + WINNING_CAPTURE;
        }
        list[i].score = sameMove(m, hashMove) ? score + HASH_MOVE_SCORE : score;
    }
}

void ChessBoard::scoreCaptures(MoveEntry* list, int count, Move hashMove) const {
    scoreCapturesDeferred(list, count, hashMove);
    for (int i = 0; i < count; ++i)
        settleExchange(list[i]);
}

void ChessBoard::clearOrderingTables() {
    std::memset(killerMove1, 0, sizeof killerMove1);
    std::memset(killerMove2, 0, sizeof killerMove2);
    std::memset(mateKiller, 0, sizeof mateKiller);
    std::memset(historyTable, 0, sizeof historyTable);
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
