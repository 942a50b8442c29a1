// Whether a move checks the enemy king, decided from the move word and the position before
// it, without making the move. Perft's statistics ask it for every leaf move.
#pragma once

#include "board/position.h"

// What the test needs about the enemy king, gathered once per position.
struct CheckSquares {
    Square king;             // the enemy king the check test of make looks at
    Bitboard fromSquares[7]; // by piece type: where a piece of the mover would attack it
    Bitboard discoverers;    // the mover's pieces alone between it and one of his sliders
    bool reliable;           // false when the enemy king already stands attacked
};

// `enemyKingSafe` spares the attack test when the caller knows its answer.
CheckSquares checkSquaresOf(const Position& p, bool enemyKingSafe = false);

// The move's check worked out on occupancy and piece sets as they will be after it: for en
// passant, castling and promotions, whose from-square or second piece can open or close a
// line to the king.
bool givesCheckSpecial(const Position& p, Square king, Move m);

// Direct check from the target square, or a discovered one when the from-square was the only
// piece between the king and a slider of the mover and the move leaves that line. Only a
// legal move of the side to move is asked, and only when `cs.reliable`: a slider that moves
// along a line to the king would then have attacked it already.
inline bool givesCheck(const Position& p, const CheckSquares& cs, Move m) {
    if (m & (MOVE_EP | MOVE_CASTLE) || movePromotion(m))
        return givesCheckSpecial(p, cs.king, m);
    const Square from = moveFrom(m), to = moveTo(m);
    if (cs.fromSquares[movePiece(m)] & bit(to))
        return true;
    return (cs.discoverers & bit(from)) && direction[from][cs.king] != direction[to][cs.king];
}
