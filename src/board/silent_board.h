// An engine object with every hook empty: for the command-line tools, the benchmark and the
// tests, which drive the engine directly and want nothing sent anywhere.
#pragma once

#include "board/chess_board.h"

class SilentBoard : public ChessBoard {
public:
    void hookReserved2() override {}
    void hookGameMove() override {}
    void hookThinkStarted() override {}
    void sendMove() override {}
    void hookThinkEnded() override {}
    void printSearchInfo(int, const PrincipalVariation&, std::uint64_t, double) override {}
    void hookSearchStarted() override {}
    void hookBoardEvent() override {}
    void hookReserved10() override {}
    int readCommand() override { return 0; }
};
