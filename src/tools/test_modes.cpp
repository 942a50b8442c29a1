// The perft and divide modes. Every mode sets the engine up the way a protocol does: the
// hash size from the configuration file, the tables, a new game.
#include "tools/test_modes.h"

#include "engine/config.h"
#include "engine/front_end.h"
#include "tools/perft_output.h"

#include <cstdio>

namespace {

// Creates the engine and loads the FEN; false (after "Bad FEN string !") when it is rejected.
bool setUpEngine(const char* fen) {
    board = new ChessBoardUCI();
    board->initTables(configInt("Engine", "Hash", 128));
    board->newGame();
    if (fen && !board->setPosition(fen)) {
        std::printf("Bad FEN string !\n");
        return false;
    }
    return true;
}

void tearDownEngine() {
    board->releaseTables();
    delete board;
    board = nullptr;
}

} // namespace

int runPerftMode(int depth, const char* fen) {
    const bool ready = setUpEngine(fen);
    if (ready)
        printPerftTable(*board, depth);
    tearDownEngine();
    return ready ? 1 : 0;
}

int runDivideMode(int depth, const char* fen) {
    const bool ready = setUpEngine(fen);
    if (ready)
        printDivideListing(*board, depth);
    tearDownEngine();
    return ready ? 1 : 0;
}
