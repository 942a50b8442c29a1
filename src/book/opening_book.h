// The opening book in memory: nodes of up to 16 moves, keyed by the position's key.
#pragma once

#include <cstdint>
#include <vector>

#include "board/types.h"

struct BookMove {
    Move move;
    std::uint32_t count;
    std::uint8_t whitePercent;
    std::uint8_t blackPercent;
};

struct BookNode {
    std::uint32_t keyLow;
    std::uint32_t keyHigh;
    std::uint32_t moveCount;
    BookMove moves[16];
};

struct OpeningBook {
    std::vector<BookNode> nodes;
};
