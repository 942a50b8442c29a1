// The last ply of the perft walks, counted without making its moves wherever the position
// allows. perft.cpp walks the plies above it.
#pragma once

#include "board/chess_board.h"

enum Verdict { ILLEGAL, LEGAL, ASK_MAKE };

// Legality of the generated moves of the side to move, decided without make where that is
// safe. A king step is legal when its target is safe with the king lifted; castling was
// fully tested by its generator. Outside check, a move of an unpinned piece other than en
// passant cannot expose the king; in check the generator offers such a piece only blocks
// and captures of a lone checker, which end the check. Pinned pieces and en passant go to
// make. A position whose tracked king is missing or touches the enemy king goes to make
// whole.
struct LegalityTest {
    Bitboard pinned;
    Square king;
    Color them;
    bool usable;

    explicit LegalityTest(const Position& p);
    Verdict of(const ChessBoard& b, Move m) const {
        if (!usable)
            return ASK_MAKE;
        if (movePiece(m) == KING)
            return isCastle(m) || !b.isAttackedWithout(king, moveTo(m), them) ? LEGAL : ILLEGAL;
        return isEnPassant(m) || (pinned & bit(moveFrom(m))) ? ASK_MAKE : LEGAL;
    }
};

// Adds the seven counters of the legal moves of the position on the board to `c`. The move
// lists it needs start at moveStack + listStart, two deep. `afterLegalMove` says the position
// was reached by a move that make found legal, so the enemy king is known to be safe.
void countLeafMoves(ChessBoard& b, int listStart, PerftCounters& c, bool afterLegalMove);

// The number of legal moves of a position not in check whose tracked king is on the board;
// nothing is made but the en-passant captures.
std::uint64_t countLegalLeaves(ChessBoard& b);
