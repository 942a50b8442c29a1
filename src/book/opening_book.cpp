// The book's nodes in memory: adding moves, finding a node by key, ordering the nodes and the
// listing of one node. The file format is in book_file.cpp, the engine's lookup in
// book_lookup.cpp.
#include "book/opening_book.h"

#include "board/chess_board.h"
#include "board/trace.h"

#include <algorithm>

bool BookNode::addMove(Move move, std::uint32_t count, std::uint8_t whitePercent,
                       std::uint8_t blackPercent) {
    for (std::uint32_t i = 0; i < moveCount; ++i)
        if (moves[i].move == move)
            return true;
    if (moveCount >= BOOK_NODE_MOVES) {
        trace("max book node reached !!!");
        return false;
    }
    moves[moveCount++] = {move, count, whitePercent, blackPercent};
    return true;
}

bool OpeningBook::insertBookMove(std::uint32_t keyLow, std::uint32_t keyHigh, Move move,
                                 std::uint32_t count, std::uint8_t whitePercent,
                                 std::uint8_t blackPercent) {
    const std::uint64_t key = std::uint64_t(keyHigh) << 32 | keyLow;
    auto [slot, isNew]      = index.try_emplace(key, nodeList.size());
    if (isNew)
        nodeList.push_back(BookNode{keyLow, keyHigh, 0, {}});
    return nodeList[slot->second].addMove(move, count, whitePercent, blackPercent);
}

const BookNode* OpeningBook::findNode(std::uint64_t key) const {
    const auto slot = index.find(key);
    return slot == index.end() ? nullptr : &nodeList[slot->second];
}

bool OpeningBook::isSortedByKey() const {
    return std::is_sorted(nodeList.begin(), nodeList.end(),
                          [](const BookNode& a, const BookNode& b) { return a.key() < b.key(); });
}

// Keys are unique (every insertion goes through the index), so any sort gives the one order
// a file written by saveBook has.
void OpeningBook::sortByKey() {
    std::sort(nodeList.begin(), nodeList.end(),
              [](const BookNode& a, const BookNode& b) { return a.key() < b.key(); });
    rebuildIndex();
}

void OpeningBook::rebuildIndex() {
    index.clear();
    for (std::size_t i = 0; i < nodeList.size(); ++i)
        index[nodeList[i].key()] = i;
}

void OpeningBook::clear() {
    nodeList.clear();
    index.clear();
}

std::size_t OpeningBook::moveTotal() const {
    std::size_t total = 0;
    for (const BookNode& node : nodeList)
        total += node.moveCount;
    return total;
}

namespace {

// The listing goes to the trace, which prints nothing in the engine, and to a real stream
// for the book tool.
void listLine(std::FILE* out, const char* line) {
    trace("%s", line);
    if (out)
        std::fprintf(out, "%s\n", line);
}

} // namespace

void OpeningBook::printBookMoves(std::uint32_t keyLow, std::uint32_t keyHigh,
                                 std::FILE* out) const {
    const BookNode* node = findNode(std::uint64_t(keyHigh) << 32 | keyLow);
    if (!node) {
        listLine(out, "OpeningBook : no moves found");
        return;
    }
    char line[160];
    std::snprintf(line, sizeof line, "OpeningBook : found %d moves :", int(node->moveCount));
    listLine(out, line);
    for (std::uint32_t i = 0; i < node->moveCount; ++i) {
        const BookMove& entry = node->moves[i];
        char text[32];
        ChessBoard::moveToLongText(entry.move, text);
        std::snprintf(line, sizeof line, "%s : # %u, white %d %%, black %d %%", text, entry.count,
                      int(entry.whitePercent), int(entry.blackPercent));
        listLine(out, line);
    }
}
