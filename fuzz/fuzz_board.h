// The one engine object a fuzz target keeps for all its inputs: tables built once, no
// transposition table.
#pragma once

#include "tools/silent_board.h"

inline SilentBoard& fuzzBoard() {
    static SilentBoard* board = [] {
        auto* b = new SilentBoard();
        b->initTables(0);
        return b;
    }();
    return *board;
}
