// The words every subsystem shares: squares, bitboards, colours, pieces and the packed move
// word. The bit layout of a move is described here once, in the accessors, for bits 0-25;
// the move orderer keeps its own marks in bits 30-31 of the words in its lists
// (movegen/ordering.h), which no move uses.
#pragma once

#include "platform/pop_count.h"

#include <bit>
#include <cstdint>

using Bitboard = std::uint64_t;
using Square   = int;           // 0..63, a1 = 0, b1 = 1, ..., h1 = 7, a2 = 8, ..., h8 = 63
using Move     = std::uint32_t; // packed word, 0 = no move

enum Color : int { BLACK = 0, WHITE = 1 };
enum Piece : int { EMPTY = 0, PAWN, KNIGHT, BISHOP, ROOK, QUEEN, KING };

constexpr Color opponent(Color c) {
    return Color(c ^ 1);
}
constexpr int fileOf(Square s) {
    return s & 7;
}
constexpr int rankOf(Square s) {
    return s >> 3;
}
constexpr Square squareAt(int file, int rank) {
    return rank * 8 + file;
}
constexpr Bitboard bit(Square s) {
    return Bitboard{1} << s;
}

inline Square lowestSquare(Bitboard b) {
    return std::countr_zero(b);
}
inline Square popLowest(Bitboard& b) {
    Square s = std::countr_zero(b);
    b &= b - 1;
    return s;
}

// Material in centipawns by piece type; the king's 5000 is never part of a material sum.
constexpr int pieceValue[7] = {0, 100, 325, 325, 500, 975, 5000};
constexpr int materialValue(Piece p) {
    return p == KING ? 0 : pieceValue[p];
}
// Game-phase weight by piece type: the full starting material adds up to 24.
constexpr int phaseWeight[7]      = {0, 0, 1, 1, 2, 4, 0};
constexpr char pieceLetters[2][7] = {"pnbrqk", "PNBRQK"}; // by colour, indexed by piece - 1

// Castling-rights bits.
constexpr int CASTLE_WHITE_SHORT = 1, CASTLE_WHITE_LONG = 2;
constexpr int CASTLE_BLACK_SHORT = 4, CASTLE_BLACK_LONG = 8;

// Move word: from 0-5, to 6-11, moving piece 12-14, captured piece 15-17, promotion 18-20,
// castle 21, pawn double step 22, en passant 23, check mark 24-25 (1 check, 2 mate); 26-31
// unused by moves.
constexpr Move MOVE_CASTLE = 1u << 21, MOVE_DOUBLE = 1u << 22, MOVE_EP = 1u << 23;
constexpr Move NO_MOVE = 0;

constexpr Square moveFrom(Move m) {
    return m & 63;
}
constexpr Square moveTo(Move m) {
    return (m >> 6) & 63;
}
constexpr Piece movePiece(Move m) {
    return Piece((m >> 12) & 7);
}
constexpr Piece moveCaptured(Move m) {
    return Piece((m >> 15) & 7);
}
constexpr Piece movePromotion(Move m) {
    return Piece((m >> 18) & 7);
}
constexpr bool isCastle(Move m) {
    return m & MOVE_CASTLE;
}
constexpr bool isDoubleStep(Move m) {
    return m & MOVE_DOUBLE;
}
constexpr bool isEnPassant(Move m) {
    return m & MOVE_EP;
}
constexpr int moveCheck(Move m) {
    return (m >> 24) & 3;
}

constexpr Move makeMoveWord(Square from, Square to, Piece piece, Piece captured = EMPTY,
                            Piece promotion = EMPTY) {
    return Move(from) | Move(to) << 6 | Move(piece) << 12 | Move(captured) << 15 |
           Move(promotion) << 18;
}
constexpr Move withCheckMark(Move m, int mark) {
    return (m & ~(3u << 24)) | Move(mark) << 24;
}
// The part of a move word that names the move itself, without flags added for text.
constexpr Move moveIdentity(Move m) {
    return m & 0xFFFFFF;
}

// The square of the pawn that an en-passant capture by `side` onto `to` takes.
constexpr Square enPassantVictim(Color side, Square to) {
    return side == WHITE ? to - 8 : to + 8;
}

// The four castling moves are fixed words.
constexpr Move WHITE_SHORT_CASTLE = 0x206184, WHITE_LONG_CASTLE = 0x206084;
constexpr Move BLACK_SHORT_CASTLE = 0x206fbc, BLACK_LONG_CASTLE = 0x206ebc;

// One slot of a move list: the move and the ordering score the search sorts by.
struct MoveEntry {
    Move move;
    std::int32_t score;
};

// Scores, in centipawns from the side to move's view.
constexpr int MATE_SCORE     = 32000; // being mated at ply p scores p - MATE_SCORE
constexpr int MATE_BOUND     = 31744; // beyond it a score is a mate score
constexpr int INFINITE_SCORE = 32001;

// Search depths are counted in eighths of a ply.
constexpr int ONE_PLY = 8;
