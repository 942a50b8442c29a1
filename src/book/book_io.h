// Files of the book tools: a whole file read into memory, and a file written under a
// temporary name beside its destination and moved into place only when everything was
// written, so that a failed or interrupted run never leaves a half-written book behind.
#pragma once

#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

bool readWholeFile(const char* path, std::vector<std::uint8_t>& bytes);

class AtomicFile {
public:
    explicit AtomicFile(std::string destination);
    ~AtomicFile(); // an uncommitted file is removed
    AtomicFile(const AtomicFile&)            = delete;
    AtomicFile& operator=(const AtomicFile&) = delete;

    std::FILE* file() const { return handle; } // null when the temporary could not be made
    bool write(const void* data, std::size_t size);
    // Closes the temporary and moves it over the destination (an old file is replaced, on
    // Windows too). False, with nothing at the destination changed, when a write failed.
    bool commit();

private:
    std::string target;
    std::string temporary;
    std::FILE* handle = nullptr;
    bool failed       = false;
};
