// The bands of the move-ordering score, highest tried first. scoreMoves and scoreCaptures
// write them; the search reads some back: a move with a killer mark is never reduced, and
// a move ordered among the winning captures or above them is not made a killer.
#pragma once

#include "board/chess_board.h"

#include <utility>

constexpr int HASH_MOVE_SCORE    = 100000;
constexpr int MATE_KILLER_SCORE  = 90000;
constexpr int WINNING_CAPTURE    = 50000; // plus the gain
constexpr int KILLER_1_SCORE     = 46000;
constexpr int KILLER_2_SCORE     = 45000;
constexpr int EVEN_CAPTURE       = 40000;
constexpr int OLD_KILLER_1_SCORE = 36000; // the killers of two plies back
constexpr int OLD_KILLER_2_SCORE = 35000;
constexpr int LOSING_CAPTURE     = 1000; // plus the (negative) exchange value
constexpr int HISTORY_BASE       = 1001; // plus the history count
constexpr int QUIESCENCE_SKIP    = -1;   // a move the capture search leaves out

// The marks of the mate killer and of the killers of this ply and of two plies back. A
// quiet move whose history score happens to land on one of them carries the mark too.
constexpr bool hasKillerMark(int score) {
    return score == MATE_KILLER_SCORE || score == KILLER_1_SCORE || score == KILLER_2_SCORE ||
           score == OLD_KILLER_1_SCORE || score == OLD_KILLER_2_SCORE;
}

// A capture whose place depends on its exchange is scored at first with a ceiling of what
// the exchange can give, and marked in the move word's top bits, which no move uses: by
// scoreMovesDeferred or scoreCapturesDeferred, whose bands it then settles into. Most
// nodes end before such a move comes up, and then its exchange is never evaluated.
constexpr Move EXCHANGE_PENDING_MOVES    = 1u << 31;
constexpr Move EXCHANGE_PENDING_CAPTURES = 1u << 30;
constexpr Move EXCHANGE_PENDING          = EXCHANGE_PENDING_MOVES | EXCHANGE_PENDING_CAPTURES;

// Selection sort, one step at a time: most nodes cut off after a move or two, so sorting
// the whole list first would be wasted. The first of equal scores wins, which keeps the
// generator's order among equals. A marked move that comes out on top is settled and the
// step taken again: a ceiling at or above every other score is the only way it can lead,
// and every move before it scores less, so the step picks what it would have picked with
// every exchange evaluated in advance.
inline void ChessBoard::pickMove(MoveEntry* list, int index, int count) const {
    for (;;) {
        int best = index, bestScore = list[index].score;
        for (int i = index + 1; i < count; ++i)
            if (list[i].score > bestScore) {
                best      = i;
                bestScore = list[i].score;
            }
        if (list[best].move & EXCHANGE_PENDING) {
            settleExchange(list[best]);
            continue;
        }
        if (best != index)
            std::swap(list[index], list[best]);
        return;
    }
}
