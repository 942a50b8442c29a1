#include "book_test_files.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

ScratchDir::ScratchDir() {
    char pattern[] = "/tmp/pellix-book-test-XXXXXX";
    if (mkdtemp(pattern))
        dir = pattern;
}

ScratchDir::~ScratchDir() {
    std::error_code ignored;
    if (!dir.empty())
        std::filesystem::remove_all(dir, ignored);
}

namespace {
void putWord(std::vector<std::uint8_t>& out, std::uint32_t value) {
    for (int shift = 0; shift < 32; shift += 8)
        out.push_back(std::uint8_t(value >> shift));
}
} // namespace

std::vector<std::uint8_t> bookImage(const std::vector<RawNode>& nodes, long long nodeCount) {
    std::vector<std::uint8_t> out = {'B', 'O', 'O', 'K'};
    putWord(out, 0x00010001);
    putWord(out, std::uint32_t(nodeCount < 0 ? nodes.size() : nodeCount));
    for (const RawNode& node : nodes) {
        putWord(out, std::uint32_t(node.key));
        putWord(out, std::uint32_t(node.key >> 32));
        putWord(out, std::uint32_t(node.moves.size()));
        for (const RawMove& m : node.moves) {
            putWord(out, m.move);
            putWord(out, m.count);
            out.push_back(m.white);
            out.push_back(m.black);
        }
    }
    return out;
}

void writeFile(const std::string& path, const std::vector<std::uint8_t>& bytes) {
    std::ofstream(path, std::ios::binary)
        .write(reinterpret_cast<const char*>(bytes.data()), std::streamsize(bytes.size()));
}

std::vector<std::uint8_t> readFile(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}
