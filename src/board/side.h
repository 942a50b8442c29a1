// The board's fixed masks, and what they mean for each side: where its pawns start and
// promote from and which way they go, and where it castles. Move generation, the perft
// counter and the evaluation all read them here.
#pragma once

#include "board/types.h"

constexpr Bitboard FILE_A = 0x0101010101010101ULL, FILE_H = FILE_A << 7;
constexpr Bitboard RANK_1 = 0xFFULL, RANK_2 = RANK_1 << 8, RANK_7 = RANK_1 << 48;

template <Color US> struct Side {
    static constexpr Color THEM            = opponent(US);
    static constexpr Bitboard SECOND_RANK  = US == WHITE ? RANK_2 : RANK_7; // double steps
    static constexpr Bitboard SEVENTH_RANK = US == WHITE ? RANK_7 : RANK_2; // promotes from
    static constexpr int FORWARD           = US == WHITE ? 8 : -8;
    static constexpr int WEST_CAPTURE = FORWARD - 1, EAST_CAPTURE = FORWARD + 1;
    static constexpr int EN_PASSANT_RANK = US == WHITE ? 5 : 2; // where our pawn lands

    static constexpr Bitboard advance(Bitboard b) { return US == WHITE ? b << 8 : b >> 8; }
    template <int STEP> static constexpr Bitboard shift(Bitboard b) {
        return STEP > 0 ? b << STEP : b >> -STEP;
    }
    // The squares from which one of our pawns would capture on one of `targets`.
    static constexpr Bitboard capturersOf(Bitboard targets) {
        return shift<-WEST_CAPTURE>(targets & ~FILE_H) | shift<-EAST_CAPTURE>(targets & ~FILE_A);
    }
    static constexpr bool onLastRank(Square s) { return US == WHITE ? s >= 56 : s < 8; }

    // Castling: the king's home, the rights, the squares between king and rook, the moves.
    static constexpr Square KING_HOME    = US == WHITE ? 4 : 60;
    static constexpr int SHORT_RIGHT     = US == WHITE ? CASTLE_WHITE_SHORT : CASTLE_BLACK_SHORT;
    static constexpr int LONG_RIGHT      = US == WHITE ? CASTLE_WHITE_LONG : CASTLE_BLACK_LONG;
    static constexpr Bitboard SHORT_PATH = bit(KING_HOME + 1) | bit(KING_HOME + 2);
    static constexpr Bitboard LONG_PATH =
        bit(KING_HOME - 1) | bit(KING_HOME - 2) | bit(KING_HOME - 3);
    static constexpr Move SHORT_CASTLE = US == WHITE ? WHITE_SHORT_CASTLE : BLACK_SHORT_CASTLE;
    static constexpr Move LONG_CASTLE  = US == WHITE ? WHITE_LONG_CASTLE : BLACK_LONG_CASTLE;
};
