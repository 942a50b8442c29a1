// Feeds arbitrary bytes to the book reader. Whatever it keeps must be a book the engine can
// use: no node beyond 16 moves, every lookup ends, and a book move is played only when it is
// a legal move of the position, leaving the board as it was. The same bytes read as polyglot
// entries, when they pass the tools' check, import into a book of legal moves.
#include "book/opening_book.h"
#include "book/polyglot_books.h"
#include "fuzz_board.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <vector>

namespace {

void importEntries(const std::uint8_t* data, std::size_t size) {
    std::size_t offset;
    if (checkPolyglotImage(data, size, offset))
        return;
    std::vector<PolyglotEntry> entries;
    for (std::size_t at = 0; at < size; at += POLYGLOT_ENTRY_SIZE)
        entries.push_back(readPolyglotEntry(data + at));
    // Entries at the initial position's key, so that the walk has somewhere to go.
    SilentBoard& board = fuzzBoard();
    board.newGame();
    for (PolyglotEntry& e : entries)
        e.key = e.key & 1 ? polyglotKey(board) : e.key;
    std::stable_sort(entries.begin(), entries.end(),
                     [](const PolyglotEntry& a, const PolyglotEntry& b) { return a.key < b.key; });
    OpeningBook imported;
    ImportTally tally;
    importPolyglot(board, entries, 3, imported, tally);
    if (tally.positions != imported.nodes().size())
        std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    importEntries(data, size);
    OpeningBook book;
    std::size_t offset;
    const bool whole = checkBookImage(data, size, offset) == nullptr;
    if (!book.readBook(data, size)) {
        if (whole)
            std::abort();
        return 0;
    }
    for (const BookNode& node : book.nodes()) {
        if (node.moveCount > BOOK_NODE_MOVES)
            std::abort();
        chooseBookMove(book, node.keyLow, node.keyHigh);
        chooseBookMove(book, node.keyLow + 1, node.keyHigh);
    }

    // Every move read becomes a candidate of the position on the board, whose node sits
    // between two others so that the lookup reaches it.
    SilentBoard& board = fuzzBoard();
    board.setPosition(FUZZ_POSITIONS[size % 4]);
    board.openingBook().clear();
    const std::uint32_t low  = std::uint32_t(board.hashKey),
                        high = std::uint32_t(board.hashKey >> 32);
    board.openingBook().insertBookMove(0, 0, 1, 1, 0, 0);
    board.openingBook().insertBookMove(~0u, ~0u, 1, 1, 0, 0);
    for (const BookNode& node : book.nodes())
        for (std::uint32_t i = 0; i < node.moveCount; ++i)
            board.openingBook().insertBookMove(low, high, node.moves[i].move,
                                               node.moves[i].count | 1, 0, 0);
    board.openingBook().sortByKey();
    MoveEntry legal[MAX_GENERATED];
    MoveEntry* const legalEnd = legal + board.generateLegalMoves(legal);
    const Position before     = board;
    for (int draw = 0; draw < 8; ++draw) {
        const Move m = board.probeBook();
        if (!samePosition(board, before))
            std::abort();
        if (m != NO_MOVE && std::find_if(legal, legalEnd, [&](const MoveEntry& e) {
                                return e.move == m;
                            }) == legalEnd)
            std::abort();
    }
    return 0;
}
