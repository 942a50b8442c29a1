// Feeds arbitrary text to the PGN reader and the book builder's replay: reading must end,
// every game must come back with its number, the board the games are replayed on must stay
// consistent, and a replayed line holds only moves of its first plies, each once.
#include "book/book_builder.h"
#include "fuzz_board.h"

#include <cstdint>
#include <cstdlib>
#include <string_view>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    SilentBoard& board = fuzzBoard();
    std::vector<PlayedMove> line;
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    if (lastGameStart(text) > size)
        std::abort();
    PgnReader reader(std::string_view(reinterpret_cast<const char*>(data), size));
    PgnGame game;
    std::string detail;
    int games = 0;
    while (reader.next(game)) {
        if (game.number != ++games || games > int(size))
            std::abort();
        if (replayGame(board, game, 8, line, detail) != SKIP_NONE ? !line.empty() : line.size() > 8)
            std::abort();
        for (const char* message : board.checkConsistency())
            if (std::string_view(message).rfind("bad king position", 0) != 0)
                std::abort();
    }
    return 0;
}
