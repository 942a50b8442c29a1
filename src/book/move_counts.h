// The book builder's counts: how often each move was played from each position and with what
// results. A CountTable gathers them in memory up to a fixed number of entries; a full table
// is sorted and written out as a run, a temporary file of sorted counts; and mergeCounts
// walks any number of sorted sources in key order, adding up the counts of a move that
// appears in several.
#pragma once

#include "board/types.h"
#include "book/pgn_reader.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <functional>
#include <memory>
#include <string>
#include <vector>

struct MoveCount {
    std::uint64_t key;
    Move move;
    std::uint32_t games, whiteWins, blackWins;
};

constexpr bool countsBefore(const MoveCount& a, const MoveCount& b) {
    return a.key != b.key ? a.key < b.key : a.move < b.move;
}

class CountTable {
public:
    // Room for `capacity` entries; it counts as full at three quarters of that.
    explicit CountTable(std::size_t capacity);
    bool allocated() const { return capacity != 0; }
    void add(std::uint64_t key, Move move, GameResult result);
    bool full() const { return used >= limit; }
    std::size_t size() const { return used; }
    // The entries moved to the front of the table and sorted; clear() before adding again.
    const MoveCount* sorted();
    void clear();

    static std::size_t capacityFor(std::size_t bytes);

private:
    struct FreeDeleter {
        void operator()(MoveCount* p) const;
    };
    std::unique_ptr<MoveCount[], FreeDeleter> slots;
    std::size_t capacity, used = 0, limit;
};

// A source of counts in ascending order of key and move.
class CountSource {
public:
    virtual ~CountSource()              = default;
    virtual bool next(MoveCount& count) = 0;
};

class MemoryCounts : public CountSource {
public:
    MemoryCounts(const MoveCount* first, std::size_t count) : at(first), end(first + count) {}
    bool next(MoveCount& count) override;

private:
    const MoveCount* at;
    const MoveCount* end;
};

// A sorted run in a temporary file, removed with the object.
class CountRun : public CountSource {
public:
    CountRun() = default;
    ~CountRun() override;
    CountRun(const CountRun&)            = delete;
    CountRun& operator=(const CountRun&) = delete;

    bool create(); // false when no temporary file can be made
    bool append(const MoveCount& count);
    bool finish(); // everything written; reading starts at the first count
    bool next(MoveCount& count) override;

private:
    std::string path;
    std::FILE* file = nullptr;
    std::vector<MoveCount> buffer;
    std::size_t at = 0;
    bool failed    = false;
    bool read      = false; // reading has begun: the file is open or was read to its end
};

// Calls `sink` once for every (key, move) of the sources, in ascending order, with the counts
// of all sources added up.
void mergeCounts(const std::vector<CountSource*>& sources,
                 const std::function<void(const MoveCount&)>& sink);
