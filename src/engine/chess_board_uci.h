// ChessBoardUCI: the console adapter. It gives the engine's hooks the front end's behaviour
// by handing them to the front end that owns the engine: sending the chosen move, sending
// search reports, and reading a command that arrives while the engine thinks. The other
// hooks stay empty.
#pragma once

#include "board/chess_board.h"
#include "engine/console.h"

class ChessBoardUCI : public ChessBoard {
public:
    explicit ChessBoardUCI(Console& owner) : frontEnd(owner) {}

    void hookReserved2() override {}
    void hookGameMove() override {}
    void hookThinkStarted() override {}
    void sendMove() override { frontEnd.sendMove(*this); }
    void hookThinkEnded() override {}
    void printSearchInfo(int depth, const PrincipalVariation& pv, std::uint64_t nodes,
                         double timeMicros) override {
        frontEnd.printSearchInfo(*this, depth, pv, nodes, timeMicros);
    }
    void hookSearchStarted() override {}
    void hookBoardEvent() override {}
    void hookReserved10() override {}
    int readCommand() override { return frontEnd.readCommand(); }

private:
    Console& frontEnd;
};
