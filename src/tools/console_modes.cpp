// The perft and divide modes: the console table or listing from the initial position or
// from the FEN given on the command line.
#include "tools/console_modes.h"

#include "board/chess_board.h"
#include "tools/perft_output.h"

#include <cstdio>

namespace {

// False (after "Bad FEN string !") when the FEN is rejected.
bool loadFen(ChessBoard& engine, const char* fen) {
    if (fen && !engine.setPosition(fen)) {
        std::printf("Bad FEN string !\n");
        return false;
    }
    return true;
}

} // namespace

int runPerftMode(ChessBoard& engine, int depth, const char* fen) {
    if (!loadFen(engine, fen))
        return 0;
    printPerftTable(engine, depth);
    return 1;
}

int runDivideMode(ChessBoard& engine, int depth, const char* fen) {
    if (!loadFen(engine, fen))
        return 0;
    printDivideListing(engine, depth);
    return 1;
}
