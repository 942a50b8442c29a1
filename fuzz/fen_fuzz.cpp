// Feeds arbitrary text to the FEN reader; whatever it accepts must be a consistent position
// that make and unmake leave exactly as they found it.
#include "fuzz_board.h"

#include <cstdint>
#include <cstdlib>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    SilentBoard& board = fuzzBoard();
    const std::string text(reinterpret_cast<const char*>(data), size);
    if (!board.setPosition(text.c_str()))
        return 0;
    for (const char* message : board.checkConsistency())
        if (std::string(message).rfind("bad king position", 0) != 0)
            std::abort();
    const Position before = board;
    board.perft(2, 0);
    if (!samePosition(board, before))
        std::abort();
    char fen[128];
    board.toFen(fen);
    return 0;
}
