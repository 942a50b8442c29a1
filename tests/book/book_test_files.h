// Book files for the book tests: scratch paths that clean up after themselves, and book images
// built byte by byte, so that the tests check the format itself rather than the writer.
#pragma once

#include "board/types.h"

#include <cstdint>
#include <string>
#include <vector>

// A path in a fresh scratch directory, removed with everything in it when the object goes.
class ScratchDir {
public:
    ScratchDir();
    ~ScratchDir();
    ScratchDir(const ScratchDir&)            = delete;
    ScratchDir& operator=(const ScratchDir&) = delete;
    std::string path(const std::string& name) const { return dir + "/" + name; }

private:
    std::string dir;
};

struct RawMove {
    Move move;
    std::uint32_t count;
    std::uint8_t white, black;
    bool operator==(const RawMove&) const = default;
};
struct RawNode {
    std::uint64_t key;
    std::vector<RawMove> moves;
    bool operator==(const RawNode&) const = default;
};

// A book file image: "BOOK", the version, `nodeCount` (the real count when negative), then
// the records in the order given.
std::vector<std::uint8_t> bookImage(const std::vector<RawNode>& nodes, long long nodeCount = -1);
void writeFile(const std::string& path, const std::vector<std::uint8_t>& bytes);
std::vector<std::uint8_t> readFile(const std::string& path);
