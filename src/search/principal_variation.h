// The principal variation a search node hands back to its caller: the moves and the score
// each node on the line returned.
#pragma once

#include "board/types.h"

#include <cstdint>

constexpr int MAX_PLY = 64; // deepest line the search tables hold

struct PrincipalVariation {
    std::uint32_t count;
    Move moves[MAX_PLY];
    std::int16_t scores[MAX_PLY];

    void clear() {
        count     = 0;
        moves[0]  = NO_MOVE;
        scores[0] = 0;
    }
};
