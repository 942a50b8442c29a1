// The front end as the console adapter (ChessBoardUCI) sees it: what the engine's hooks hand
// over while it thinks.
#pragma once

#include "board/principal_variation.h"

#include <cstdint>

class ChessBoard;

class Console {
public:
    // The move line for the engine's bestMove, unless the front end holds it back.
    virtual void sendMove(ChessBoard& engine) = 0;
    // The report after a completed iteration, in the protocol's dialect.
    virtual void printSearchInfo(ChessBoard& engine, int depth, const PrincipalVariation& pv,
                                 std::uint64_t nodes, double timeMicros) = 0;
    // Reads and runs one command; 0 at the end of input.
    virtual int readCommand() = 0;

protected:
    ~Console() = default;
};
