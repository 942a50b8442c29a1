// The lookup the engine plays from: a binary search over the nodes sorted by key, then a move
// drawn at random in proportion to the number of games each was played in.
#include "book/opening_book.h"

#include <cstdlib>

const BookNode* lookupBookNode(const OpeningBook& book, std::uint64_t key) {
    const std::vector<BookNode>& nodes = book.nodes();
    if (nodes.empty())
        return nullptr;
    std::size_t lo = 0, hi = nodes.size() - 1;
    for (;;) {
        const std::size_t mid     = lo + (hi - lo) / 2;
        const std::uint64_t found = nodes[mid].key();
        if (found == key)
            return &nodes[mid];
        if (found > key)
            hi = mid;
        else
            lo = mid;
        // The search ends when one step is left between lo and hi, so the ends of the book
        // are seen only as midpoints. The rule is kept because it decides which positions of
        // an existing book the engine plays from (pellix-book show reports the unreachable
        // ones). A gap of zero only arises in books of one or two nodes, where the rule
        // alone would go round forever on the same midpoint.
        if (hi - lo <= 1)
            return nullptr;
    }
}

// The runtime library's rand(), widened to 31 bits where its range is narrower (15 bits in
// the Windows C library), so that the draw below reaches every count of a book built from
// more than 65,535 games. Where rand() has 31 bits already it is used as it is.
std::uint32_t bookRandom() {
    if constexpr (RAND_MAX >= 0x7FFFFFFF)
        return std::uint32_t(std::rand());
    const std::uint32_t low = std::uint32_t(std::rand()) & 0x7FFF;
    const std::uint32_t mid = std::uint32_t(std::rand()) & 0x7FFF;
    const std::uint32_t top = std::uint32_t(std::rand()) & 1;
    return low | mid << 15 | top << 30;
}

Move chooseBookMove(const OpeningBook& book, std::uint32_t keyLow, std::uint32_t keyHigh) {
    const BookNode* node = lookupBookNode(book, std::uint64_t(keyHigh) << 32 | keyLow);
    if (!node || node->moveCount == 0)
        return NO_MOVE;
    const std::uint32_t count =
        node->moveCount < BOOK_NODE_MOVES ? node->moveCount : BOOK_NODE_MOVES;
    // Each move replaces the choice with probability count / running sum, which leaves every
    // move chosen in proportion to its count. The sum is kept wide so that counts from a
    // damaged file cannot wrap it to zero, and a zero sum (a first move of count 0) draws
    // nothing rather than dividing by it.
    std::uint64_t sum    = 0;
    std::uint32_t chosen = 0;
    for (std::uint32_t i = 0; i < count; ++i) {
        sum += node->moves[i].count;
        if (sum == 0)
            continue;
        const std::uint64_t draw = std::uint64_t(bookRandom()) + bookRandom();
        if (draw % sum < node->moves[i].count)
            chosen = i;
    }
    return node->moves[chosen].move;
}
