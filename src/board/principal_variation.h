// The principal variation a search node hands back to its caller: the moves and the score
// each node on the line returned.
#pragma once

#include "board/types.h"

#include <cstdint>

constexpr int MAX_PLY = 64; // deepest line the search tables hold

// Every word starts defined: a node that fails low stores its buffer's first move in the
// table, so a buffer no search has written yet must still read as "no move".
struct PrincipalVariation {
    std::uint32_t count          = 0;
    Move moves[MAX_PLY]          = {};
    std::int16_t scores[MAX_PLY] = {};

    void clear() {
        count     = 0;
        moves[0]  = NO_MOVE;
        scores[0] = 0;
    }
};
