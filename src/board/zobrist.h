// The Zobrist keys a position is hashed with, kept by each engine object: one key for every
// piece on every square, for each en-passant file and castling right, and for Black to move.
#pragma once

#include "board/position.h"
#include "board/types.h"

#include <cstdint>

struct ZobristKeys {
    // Generates the 781 keys from the fixed seed; a second call leaves them as they are.
    // Answers 1.
    int initZobrist();
    std::uint64_t pieceKeyOf(Color c, Piece p, Square s) const {
        return pieceKey[(c + 2 * (p - 1)) * 64 + s];
    }
    // The key of the position computed from scratch, as make and unmake keep it.
    std::uint64_t keyOf(const Position& position) const;

    std::uint64_t pieceKey[12 * 64] = {};
    std::uint64_t epKey[8]          = {};
    std::uint64_t sideKey           = 0;
    std::uint64_t castleKey[4]      = {}; // rights bits 1, 2, 4, 8
    bool keysReady                  = false;
};
