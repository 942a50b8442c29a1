// The bands of the move-ordering score, highest tried first. scoreMoves and scoreCaptures
// write them; the search reads some back: a move with a killer mark is never reduced, and
// a move ordered among the winning captures or above them is not made a killer.
#pragma once

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
