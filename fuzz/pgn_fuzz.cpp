// Feeds arbitrary text to the PGN reader and the book builder: reading must end, every game
// must come back with its number, and the board the games are replayed on must stay
// consistent.
#include "book/book_builder.h"
#include "fuzz_board.h"

#include <cstdint>
#include <cstdlib>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    SilentBoard& board = fuzzBoard();
    BookBuilder builder(board, {8, 1});
    PgnReader reader(std::string_view(reinterpret_cast<const char*>(data), size));
    PgnGame game;
    std::string detail;
    int games = 0;
    while (reader.next(game)) {
        if (game.number != ++games || games > int(size))
            std::abort();
        builder.addGame(game, detail);
        for (const char* message : board.checkConsistency())
            if (std::string_view(message).rfind("bad king position", 0) != 0)
                std::abort();
    }
    OpeningBook book;
    builder.fillBook(book);
    for (const BookNode& node : book.nodes())
        if (node.moveCount == 0 || node.moveCount > BOOK_NODE_MOVES)
            std::abort();
    return 0;
}
