// ChessBoardUCI: the console adapter. It gives the engine's hooks the front end's behaviour:
// sending the chosen move, sending search reports, and reading a command that arrives while
// the engine thinks. The other hooks stay empty.
#pragma once

#include "board/chess_board.h"

class ChessBoardUCI : public ChessBoard {
public:
    void hookReserved2() override {}
    void hookGameMove() override {}
    void hookThinkStarted() override {}
    void sendMove() override;
    void hookThinkEnded() override {}
    void printSearchInfo(int depth, const PrincipalVariation& pv, std::uint64_t nodes,
                         double timeMicros) override;
    void hookSearchStarted() override {}
    void hookBoardEvent() override {}
    void hookReserved10() override {}
    int readCommand() override;
};
