// The one way to set up an engine object: made, its keys and transposition table built for
// the given hash size, and a new game on the board. The front end, the tools, the bench,
// the fuzz targets and the tests all start from here.
#pragma once

#include "board/chess_board.h"

#include <memory>
#include <utility>

template <class Engine, class... Args>
std::unique_ptr<Engine> makeEngine(int hashMegabytes, Args&&... args) {
    auto engine = std::make_unique<Engine>(std::forward<Args>(args)...);
    engine->initTables(hashMegabytes);
    engine->newGame();
    return engine;
}
