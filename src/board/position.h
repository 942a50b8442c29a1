// The position: plain and rotated occupancy boards, the mailbox and the running totals, and
// the board writers below that keep them in step. Setting up a position and making moves
// live in ChessBoard (new_game.cpp, fen.cpp, make_move.cpp).
#pragma once

#include "board/tables.h"
#include "board/types.h"

#include <cstdint>
#include <vector>

// One record per move made, pushed by make and popped by unmake.
struct HistoryRecord {
    std::uint64_t key; // hashKey before the move
    Move move;         // 0 for a null move
    std::uint8_t castleRights;
    std::uint8_t epFile;
    std::uint8_t fiftyCounter;
    std::uint8_t inCheck;  // the search's note about the node this move reached
    std::uint8_t nodeType; // the search's node type of that node
};

// Stages of the game by phase: 21..31 opening (0), 9..20 middlegame (1), 1..8 endgame (2),
// 0 pawns only (3).
constexpr std::uint8_t stageOfPhase(int phase) {
    return phase >= 21 ? 0 : phase >= 9 ? 1 : phase >= 1 ? 2 : 3;
}

// Whether the pieces of `by` (its boards, by piece type) attack square s on a board occupied as
// `occ` says: pawns, knights, diagonal sliders, line sliders, king, tested in that order and
// stopping at the first hit. Callers that look through a piece, or at the board as a move
// will leave it, pass their own occupancy and pieces.
inline bool attackedIn(const Occupancy& occ, Square s, Color by, const Bitboard* pieces) {
    const Bitboard diagonal = pieces[BISHOP] | pieces[QUEEN], line = pieces[ROOK] | pieces[QUEEN];
    return (pawnAttack[opponent(by)][s] & pieces[PAWN]) || (knightAttack[s] & pieces[KNIGHT]) ||
           ((SLIDER_RAYS[s].diagonal & diagonal) && (occ.bishopAttacks(s) & diagonal)) ||
           ((SLIDER_RAYS[s].line & line) && (occ.rookAttacks(s) & line)) ||
           (kingAttack[s] & pieces[KING]);
}

struct Position {
    Bitboard bbAllPiece;
    Bitboard bbAllPiece90R;
    Bitboard bbAllPiece45R;
    Bitboard bbAllPiece45L;
    Bitboard bbColorPiece[2];
    Bitboard bbPiece[2][7];
    std::uint64_t hashKey;
    std::uint8_t pieceArray[64];
    std::uint8_t kingSquare[2];
    std::uint8_t castleRights;
    std::uint8_t sideToMove;
    std::uint8_t epFile; // 0 = none, else file of the pawn that just stepped twice, plus 1
    std::uint8_t fiftyCounter;
    std::uint8_t inCheck;
    std::int16_t material[2];
    std::uint8_t pieceCount[2][7];
    std::uint8_t gameStage;
    std::uint8_t phase;
    std::uint32_t historyCount;
    HistoryRecord* history; // owned by the ChessBoard

    // The board writers. setPiece and clearPiece change the plain boards, the rotated boards
    // and the mailbox together, as setup does. Make and unmake work one level down, with
    // flipBits, flipOccupancy and a few XORs of their own, because a capture changes the
    // owner of its target square but not its occupancy; checkConsistency finds any drift.
    void flipBits(Color c, Piece p, Square s) {
        bbPiece[c][p] ^= SquareMask[s];
        bbColorPiece[c] ^= SquareMask[s];
        flipOccupancy(s);
    }
    void flipOccupancy(Square s) {
        const OccupancyBits& bits = OCCUPANCY_BITS[s];
        bbAllPiece ^= bits.all;
        bbAllPiece90R ^= bits.r90;
        bbAllPiece45R ^= bits.r45R;
        bbAllPiece45L ^= bits.r45L;
    }
    void setPiece(Color c, Piece p, Square s) {
        flipBits(c, p, s);
        pieceArray[s] = std::uint8_t(p);
    }
    void clearPiece(Color c, Piece p, Square s) {
        flipBits(c, p, s);
        pieceArray[s] = EMPTY;
    }

    Color side() const { return Color(sideToMove); }
    Occupancy occupancy() const {
        return {bbAllPiece, bbAllPiece90R, bbAllPiece45R, bbAllPiece45L};
    }

    // Sliding attacks from the rotated boards.
    Bitboard rankAttacks(Square s) const {
        return slidingAttack[s].rank[(bbAllPiece >> (8 * rankOf(s) + 1)) & 63];
    }
    Bitboard fileAttacks(Square s) const {
        return slidingAttack[s].file[(bbAllPiece90R >> shift90[s]) & 63];
    }
    Bitboard diagAttacks(Square s) const { return diag45RAttacks(s) | diag45LAttacks(s); }
    Bitboard diag45RAttacks(Square s) const {
        return slidingAttack[s].diag45R[(bbAllPiece45R >> shift45R[s]) & 63];
    }
    Bitboard diag45LAttacks(Square s) const {
        return slidingAttack[s].diag45L[(bbAllPiece45L >> shift45L[s]) & 63];
    }
    Bitboard rookAttacks(Square s) const { return rankAttacks(s) | fileAttacks(s); }
    Bitboard bishopAttacks(Square s) const { return diagAttacks(s); }
    Bitboard queenAttacks(Square s) const { return rookAttacks(s) | diagAttacks(s); }

    Bitboard diagonalSliders(Color c) const { return bbPiece[c][BISHOP] | bbPiece[c][QUEEN]; }
    Bitboard lineSliders(Color c) const { return bbPiece[c][ROOK] | bbPiece[c][QUEEN]; }

    bool isAttacked(Square s, Color by) const {
        return attackedIn(occupancy(), s, by, bbPiece[by]);
    }
    bool sideToMoveInCheck() const { return isAttacked(kingSquare[sideToMove], opponent(side())); }

    // Diagnostic: compares every redundant form and returns one message per kind of
    // mismatch, in a fixed order; an empty list means the position is consistent.
    std::vector<const char*> checkConsistency() const;
};

// Compares every live field of two positions (and their history records), not the pointer.
bool samePosition(const Position& a, const Position& b);
