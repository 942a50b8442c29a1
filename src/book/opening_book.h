// The opening book in memory: nodes of up to 16 moves keyed by a position's Zobrist key, the
// binary file they are read from and written to, and the weighted choice the engine plays
// from. Matching a book move against the board lives in book_probe.cpp; making books from
// games lives in book_builder.
#pragma once

#include "board/types.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <unordered_map>
#include <vector>

constexpr int BOOK_NODE_MOVES           = 16;
constexpr std::uint32_t BOOK_VERSION    = 0x00010001;
constexpr const char* DEFAULT_BOOK_FILE = "pellixopenbook.bin";

struct BookMove {
    Move move;
    std::uint32_t count; // games in which the move was played from the node's position
    std::uint8_t whitePercent;
    std::uint8_t blackPercent;
};

struct BookNode {
    std::uint32_t keyLow;
    std::uint32_t keyHigh;
    std::uint32_t moveCount;
    BookMove moves[BOOK_NODE_MOVES];

    // True when the move is in the node afterwards (a move already there is left as it was);
    // false when the node is full.
    bool addMove(Move move, std::uint32_t count, std::uint8_t whitePercent,
                 std::uint8_t blackPercent);
    std::uint64_t key() const { return std::uint64_t(keyHigh) << 32 | keyLow; }
};

class OpeningBook {
public:
    // Adds the move to the node of the key; a new key gets a new node at the end, so the
    // nodes stay in the order their keys first arrived. False when the node was full.
    bool insertBookMove(std::uint32_t keyLow, std::uint32_t keyHigh, Move move, std::uint32_t count,
                        std::uint8_t whitePercent, std::uint8_t blackPercent);

    // Reads a book file into the book (merging with what is there). False when the file is
    // missing or does not start like a book; a damaged body keeps the records before the
    // damage.
    bool loadBook(const char* path);
    // The same from a file image in memory.
    bool readBook(const std::uint8_t* data, std::size_t size);
    // Sorts the moves of each node by count and the nodes by key, then writes the file.
    bool saveBook(const char* path);

    // The node's moves in the book's listing format, to the trace and to `out` when given.
    void printBookMoves(std::uint32_t keyLow, std::uint32_t keyHigh,
                        std::FILE* out = nullptr) const;

    const BookNode* findNode(std::uint64_t key) const; // wherever it is, sorted or not
    bool isSortedByKey() const;
    void sortByKey();
    void clear();
    const std::vector<BookNode>& nodes() const { return nodeList; }
    std::size_t moveTotal() const;

private:
    void rebuildIndex();

    std::vector<BookNode> nodeList;
    // Key to position in nodeList: loading inserts every move through a lookup by key, which
    // a scan would make quadratic in the size of the book.
    std::unordered_map<std::uint64_t, std::size_t> index;
};

// The file's 12-byte header (magic, version, node count), and one node record as saveBook
// writes it (its moves sorted by the caller: by count, highest first, then by move word),
// for writers that stream a book instead of holding it.
constexpr std::size_t BOOK_HEADER_SIZE = 12;
void writeBookHeader(std::uint8_t* out, std::uint32_t nodeCount);
void appendBookNode(std::vector<std::uint8_t>& out, const BookNode& node);
// Null when the image is a whole book: the header, exactly the node records it announces,
// none with more than 16 moves. Otherwise what is wrong, with `offset` where it shows. The
// engine is more forgiving (it keeps the records before any damage); the tools refuse.
const char* checkBookImage(const std::uint8_t* data, std::size_t size, std::size_t& offset);

// The node of the key as the engine's lookup finds it in a book sorted by key, or null. The
// search rule never looks at the first or the last node unless it lands on it as a midpoint.
const BookNode* lookupBookNode(const OpeningBook& book, std::uint64_t key);
// The legal move of the board a book move stands for (same squares, piece and promotion), or
// NO_MOVE: what the engine plays and what an export follows.
class ChessBoard;
Move legalBookMove(ChessBoard& board, Move wanted);

// A random number of 31 bits from the runtime library's rand(), on every system.
std::uint32_t bookRandom();
// A move of the key's node drawn in proportion to the counts, with bookRandom(); 0 when the
// lookup finds no node or the node has no move.
Move chooseBookMove(const OpeningBook& book, std::uint32_t keyLow, std::uint32_t keyHigh);
