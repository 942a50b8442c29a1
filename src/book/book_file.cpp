// The book file: "BOOK", a version word, a node count and variable-length node records, every
// integer little-endian. A damaged file never takes the engine down: reading stops at the
// first record that does not fit and keeps the records before it.
#include "board/trace.h"
#include "book/book_io.h"
#include "book/opening_book.h"

#include <algorithm>
#include <cstring>
#include <memory>

namespace {

constexpr std::size_t NODE_HEAD_SIZE   = 12; // key, move count
constexpr std::size_t MOVE_RECORD_SIZE = 10; // move, count, two percentages

std::uint32_t readWord(const std::uint8_t* p) {
    return std::uint32_t(p[0]) | std::uint32_t(p[1]) << 8 | std::uint32_t(p[2]) << 16 |
           std::uint32_t(p[3]) << 24;
}

void writeWord(std::vector<std::uint8_t>& out, std::uint32_t value) {
    for (int shift = 0; shift < 32; shift += 8)
        out.push_back(std::uint8_t(value >> shift));
}

struct FileCloser {
    void operator()(std::FILE* f) const { std::fclose(f); }
};
using FileHandle = std::unique_ptr<std::FILE, FileCloser>;

// Moves of equal count go by move word, so that the file depends only on what the node holds
// and never on the order its moves came in: a book built in pieces, on any number of threads,
// is the same file byte for byte.
void sortMovesByCount(BookNode& node) {
    std::sort(node.moves, node.moves + node.moveCount, [](const BookMove& a, const BookMove& b) {
        return a.count != b.count ? a.count > b.count : a.move < b.move;
    });
}

} // namespace

void appendBookNode(std::vector<std::uint8_t>& out, const BookNode& node) {
    writeWord(out, node.keyLow);
    writeWord(out, node.keyHigh);
    writeWord(out, node.moveCount);
    for (std::uint32_t i = 0; i < node.moveCount; ++i) {
        writeWord(out, node.moves[i].move);
        writeWord(out, node.moves[i].count);
        out.push_back(node.moves[i].whitePercent);
        out.push_back(node.moves[i].blackPercent);
    }
}

namespace {

// Reads the header and then the node records one at a time from `source`, which answers
// whether it could deliver the bytes asked for. The node count only bounds the loop: a count
// larger than the file stops at the first short read, with the records before it kept.
template <typename Source> bool readRecords(OpeningBook& book, Source& source) {
    std::uint8_t header[BOOK_HEADER_SIZE];
    if (!source.read(header, BOOK_HEADER_SIZE) || std::memcmp(header, "BOOK", 4) != 0)
        return false;
    const std::uint32_t nodeCount = readWord(header + 8);
    std::uint8_t record[BOOK_NODE_MOVES * MOVE_RECORD_SIZE];
    for (std::uint32_t n = 0; n < nodeCount; ++n) {
        if (!source.read(record, NODE_HEAD_SIZE))
            break;
        const std::uint32_t keyLow = readWord(record), keyHigh = readWord(record + 4);
        const std::uint32_t moves = readWord(record + 8);
        if (moves > std::uint32_t(BOOK_NODE_MOVES) ||
            !source.read(record, moves * MOVE_RECORD_SIZE))
            break;
        for (const std::uint8_t* at = record; at < record + moves * MOVE_RECORD_SIZE;
             at += MOVE_RECORD_SIZE)
            book.insertBookMove(keyLow, keyHigh, readWord(at), readWord(at + 4), at[8], at[9]);
    }
    return true;
}

struct FileSource {
    std::FILE* file;
    bool read(std::uint8_t* out, std::size_t size) {
        return std::fread(out, 1, size, file) == size;
    }
};

struct MemorySource {
    const std::uint8_t* data;
    std::size_t size;
    bool read(std::uint8_t* out, std::size_t count) {
        if (size < count)
            return false;
        if (count)
            std::memcpy(out, data, count);
        data += count;
        size -= count;
        return true;
    }
};

} // namespace

bool OpeningBook::readBook(const std::uint8_t* data, std::size_t size) {
    MemorySource source{data, size};
    return readRecords(*this, source);
}

bool OpeningBook::loadBook(const char* path) {
    FileHandle file(path ? std::fopen(path, "rb") : nullptr);
    if (!file) {
        traceAt(TRACE_ERROR, "Opening book file not found : %s", path);
        return false;
    }
    FileSource source{file.get()};
    if (!readRecords(*this, source)) {
        traceAt(TRACE_ERROR, "Bad opening book format : %s", path);
        return false;
    }
    return true;
}

bool OpeningBook::saveBook(const char* path) {
    if (!path)
        return false;
    AtomicFile file(path);
    if (!file.file())
        return false;
    for (BookNode& node : nodeList)
        sortMovesByCount(node);
    sortByKey();

    std::vector<std::uint8_t> bytes(BOOK_HEADER_SIZE);
    writeBookHeader(bytes.data(), std::uint32_t(nodeList.size()));
    for (const BookNode& node : nodeList)
        appendBookNode(bytes, node);
    return file.write(bytes.data(), bytes.size()) && file.commit();
}

void writeBookHeader(std::uint8_t* out, std::uint32_t nodeCount) {
    std::vector<std::uint8_t> bytes{'B', 'O', 'O', 'K'};
    writeWord(bytes, BOOK_VERSION);
    writeWord(bytes, nodeCount);
    std::memcpy(out, bytes.data(), BOOK_HEADER_SIZE);
}

const char* checkBookImage(const std::uint8_t* data, std::size_t size, std::size_t& offset) {
    offset = 0;
    if (size < BOOK_HEADER_SIZE || std::memcmp(data, "BOOK", 4) != 0)
        return "not a Pellix book (no BOOK header)";
    const std::uint32_t nodeCount = readWord(data + 8);
    offset                        = BOOK_HEADER_SIZE;
    for (std::uint32_t n = 0; n < nodeCount; ++n) {
        if (size - offset < NODE_HEAD_SIZE)
            return "the file ends inside a position";
        const std::uint32_t moves = readWord(data + offset + 8);
        if (moves > std::uint32_t(BOOK_NODE_MOVES))
            return "a position with more than 16 moves";
        if ((size - offset - NODE_HEAD_SIZE) / MOVE_RECORD_SIZE < moves)
            return "the file ends inside a position";
        offset += NODE_HEAD_SIZE + moves * MOVE_RECORD_SIZE;
    }
    return offset == size ? nullptr : "bytes after the last position";
}
