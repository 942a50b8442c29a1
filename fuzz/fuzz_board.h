// The one engine object a fuzz target keeps for all its inputs: tables built once, no
// transposition table.
#pragma once

#include "board/make_engine.h"
#include "tools/silent_board.h"

inline SilentBoard& fuzzBoard() {
    static SilentBoard* board = makeEngine<SilentBoard>(0).release();
    return *board;
}
