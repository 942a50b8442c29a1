// The book file: "BOOK", a version word, a node count and variable-length node records, every
// integer little-endian. A damaged file never takes the engine down: reading stops at the
// first record that does not fit and keeps the records before it.
#include <cstring>
#include <memory>

#include "book/opening_book.h"
#include "engine/trace.h"

namespace {

constexpr std::size_t HEADER_SIZE      = 12; // magic, version, node count
constexpr std::size_t NODE_HEAD_SIZE   = 12; // key, move count
constexpr std::size_t MOVE_RECORD_SIZE = 10; // move, count, two percentages

std::uint32_t readWord(const std::uint8_t* p) {
    return std::uint32_t(p[0]) | std::uint32_t(p[1]) << 8 | std::uint32_t(p[2]) << 16 |
           std::uint32_t(p[3]) << 24;
}

void writeWord(std::vector<std::uint8_t>& out, std::uint32_t value) {
    for (int shift = 0; shift < 32; shift += 8) out.push_back(std::uint8_t(value >> shift));
}

struct FileCloser {
    void operator()(std::FILE* f) const { std::fclose(f); }
};
using FileHandle = std::unique_ptr<std::FILE, FileCloser>;

bool readWholeFile(std::FILE* in, std::vector<std::uint8_t>& bytes) {
    std::uint8_t chunk[65536];
    std::size_t n;
    while ((n = std::fread(chunk, 1, sizeof chunk, in)) > 0) bytes.insert(bytes.end(), chunk, chunk + n);
    return !std::ferror(in);
}

// The exchange sort the file format has always been written with: equal counts end up in
// whatever order it leaves them, and a file must come out the same byte for byte.
void sortMovesByCount(BookNode& node) {
    const std::uint32_t count = node.moveCount;
    for (std::uint32_t i = 0; i < count; ++i)
        for (std::uint32_t j = i + 1; j < count; ++j)
            if (node.moves[j].count > node.moves[i].count) std::swap(node.moves[i], node.moves[j]);
}

void writeNode(std::vector<std::uint8_t>& out, const BookNode& node) {
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

} // namespace

bool OpeningBook::readBook(const std::uint8_t* data, std::size_t size) {
    if (size < HEADER_SIZE || std::memcmp(data, "BOOK", 4) != 0) return false;
    // The node count only bounds the loop: the records themselves say where the file ends,
    // so a count larger than the file stops at the end instead of reading past it.
    const std::uint32_t nodeCount = readWord(data + 8);
    std::size_t at                = HEADER_SIZE;
    for (std::uint32_t n = 0; n < nodeCount; ++n) {
        if (size - at < NODE_HEAD_SIZE) break;
        const std::uint32_t keyLow = readWord(data + at), keyHigh = readWord(data + at + 4);
        const std::uint32_t moves = readWord(data + at + 8);
        at += NODE_HEAD_SIZE;
        if (moves > std::uint32_t(BOOK_NODE_MOVES) || size - at < moves * MOVE_RECORD_SIZE) break;
        for (std::uint32_t i = 0; i < moves; ++i, at += MOVE_RECORD_SIZE)
            insertBookMove(keyLow, keyHigh, readWord(data + at), readWord(data + at + 4),
                           data[at + 8], data[at + 9]);
    }
    return true;
}

bool OpeningBook::loadBook(const char* path) {
    FileHandle file(path ? std::fopen(path, "rb") : nullptr);
    if (!file) {
        traceAt(TRACE_ERROR, "Opening book file not found : %s", path);
        return false;
    }
    std::vector<std::uint8_t> bytes;
    if (!readWholeFile(file.get(), bytes) || !readBook(bytes.data(), bytes.size())) {
        traceAt(TRACE_ERROR, "Bad opening book format : %s", path);
        return false;
    }
    return true;
}

bool OpeningBook::saveBook(const char* path) {
    FileHandle file(path ? std::fopen(path, "wb") : nullptr);
    if (!file) return false;
    for (BookNode& node : nodeList) sortMovesByCount(node);
    sortByKey();

    std::vector<std::uint8_t> bytes;
    bytes.insert(bytes.end(), {'B', 'O', 'O', 'K'});
    writeWord(bytes, BOOK_VERSION);
    writeWord(bytes, std::uint32_t(nodeList.size()));
    for (const BookNode& node : nodeList) writeNode(bytes, node);
    const bool written = std::fwrite(bytes.data(), 1, bytes.size(), file.get()) == bytes.size();
    return std::fclose(file.release()) == 0 && written;
}
