#include "book/book_io.h"

#include <filesystem>
#include <random>
#include <system_error>

bool readWholeFile(const char* path, std::vector<std::uint8_t>& bytes) {
    bytes.clear();
    std::FILE* in = std::fopen(path, "rb");
    if (!in)
        return false;
    std::uint8_t chunk[65536];
    std::size_t n;
    while ((n = std::fread(chunk, 1, sizeof chunk, in)) > 0)
        bytes.insert(bytes.end(), chunk, chunk + n);
    const bool read = !std::ferror(in); // a directory opens on POSIX systems; reading it fails
    std::fclose(in);
    return read;
}

AtomicFile::AtomicFile(std::string destination) : target(std::move(destination)) {
    // Beside the destination, so that the move is a rename within one file system.
    temporary = target + ".part" + std::to_string(std::random_device{}() % 1000000);
    handle    = std::fopen(temporary.c_str(), "wb");
}

AtomicFile::~AtomicFile() {
    if (handle)
        std::fclose(handle);
    if (!temporary.empty()) {
        std::error_code ignored;
        std::filesystem::remove(temporary, ignored);
    }
}

bool AtomicFile::write(const void* data, std::size_t size) {
    if (!handle || (size && std::fwrite(data, 1, size, handle) != size))
        failed = true;
    return !failed;
}

bool AtomicFile::commit() {
    if (!handle)
        return false;
    const bool closed = std::fclose(handle) == 0;
    handle            = nullptr;
    if (failed || !closed)
        return false;
    std::error_code error;
    std::filesystem::rename(temporary, target, error);
    if (error)
        return false;
    temporary.clear();
    return true;
}
