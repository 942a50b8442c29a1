// The one engine object a fuzz target keeps for all its inputs: tables built once, no
// transposition table.
#pragma once

#include "board/make_engine.h"
#include "board/silent_board.h"

inline SilentBoard& fuzzBoard() {
    static SilentBoard* board = makeEngine<SilentBoard>(0).release();
    return *board;
}

// The positions the move-text and book targets set up: the start, Kiwipete's castling and
// captures, promotions both ways, and an en-passant capture that would expose the king.
inline const char* const FUZZ_POSITIONS[] = {
    START_FEN,
    "r3k2r/p1ppqpb1/bn2pnp1/3PN3/1p2P3/2N2Q1p/PPPBBPPP/R3K2R w KQkq - 0 1",
    "r3k2r/Pppp1ppp/1b3nbN/nP6/BBP1P3/q4N2/Pp1P2PP/R2Q1RK1 w kq - 0 1",
    "8/8/8/1k6/3Pp3/8/8/4KQ2 b - d3 0 1",
};
