#include "book/move_counts.h"

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <filesystem>
#include <queue>
#include <random>
#include <system_error>

namespace {

constexpr std::size_t RUN_BUFFER = 4096; // counts read or written at a time, 96 KB

std::size_t slotOf(std::uint64_t key, Move move, std::size_t capacity) {
    const std::uint64_t h =
        (key ^ (std::uint64_t(move) * 0x9E3779B97F4A7C15ull)) * 0xD6E8FEB86659FD93ull;
    // The high bits, scaled to the capacity, which need not be a power of two.
    return std::size_t((h >> 32) * capacity >> 32);
}

std::string temporaryRunPath() {
    static std::atomic<unsigned> counter{0};
    static const unsigned salt = std::random_device{}();
    std::error_code error;
    std::filesystem::path dir = std::filesystem::temp_directory_path(error);
    if (error)
        dir = ".";
    return (dir /
            ("pellix-book-" + std::to_string(salt) + "-" + std::to_string(counter++) + ".run"))
        .string();
}

} // namespace

void CountTable::FreeDeleter::operator()(MoveCount* p) const {
    std::free(p);
}

// calloc: the operating system hands out zeroed pages as they are first touched, so a large
// table costs memory only as it fills.
CountTable::CountTable(std::size_t entries)
    : slots(static_cast<MoveCount*>(
          std::calloc(std::max<std::size_t>(entries, 16), sizeof(MoveCount)))),
      capacity(slots ? std::max<std::size_t>(entries, 16) : 0), limit(capacity / 4 * 3) {}

std::size_t CountTable::capacityFor(std::size_t bytes) {
    return std::min<std::size_t>(bytes / sizeof(MoveCount), std::size_t(1) << 31);
}

// An empty slot has a count of zero games; linear probing from the hashed slot.
void CountTable::add(std::uint64_t key, Move move, GameResult result) {
    std::size_t i = slotOf(key, move, capacity);
    while (slots[i].games != 0 && (slots[i].key != key || slots[i].move != move))
        i = i + 1 == capacity ? 0 : i + 1;
    MoveCount& slot = slots[i];
    if (slot.games == 0) {
        slot = {key, move, 0, 0, 0};
        ++used;
    }
    ++slot.games;
    slot.whiteWins += result == RESULT_WHITE_WINS;
    slot.blackWins += result == RESULT_BLACK_WINS;
}

const MoveCount* CountTable::sorted() {
    MoveCount* end = std::remove_if(slots.get(), slots.get() + capacity,
                                    [](const MoveCount& c) { return c.games == 0; });
    std::sort(slots.get(), end, countsBefore);
    return slots.get();
}

void CountTable::clear() {
    std::fill(slots.get(), slots.get() + capacity, MoveCount{});
    used = 0;
}

bool MemoryCounts::next(MoveCount& count) {
    if (at == end)
        return false;
    count = *at++;
    return true;
}

CountRun::~CountRun() {
    if (file)
        std::fclose(file);
    if (!path.empty()) {
        std::error_code ignored;
        std::filesystem::remove(path, ignored);
    }
}

bool CountRun::create() {
    path = temporaryRunPath();
    file = std::fopen(path.c_str(), "wb");
    if (!file)
        path.clear();
    buffer.reserve(RUN_BUFFER);
    return file != nullptr;
}

bool CountRun::append(const MoveCount& count) {
    buffer.push_back(count);
    if (buffer.size() == RUN_BUFFER) {
        failed |=
            std::fwrite(buffer.data(), sizeof(MoveCount), buffer.size(), file) != buffer.size();
        buffer.clear();
    }
    return !failed;
}

// The file is closed until the merge reads it, and again once it is read, so that a build
// that spills thousands of runs never holds more files open than it merges at once.
bool CountRun::finish() {
    if (!buffer.empty())
        failed |=
            std::fwrite(buffer.data(), sizeof(MoveCount), buffer.size(), file) != buffer.size();
    buffer.clear();
    failed |= std::fclose(file) != 0;
    file = nullptr;
    at   = 0;
    return !failed;
}

bool CountRun::next(MoveCount& count) {
    if (at == buffer.size()) {
        if (!file && !read)
            file = std::fopen(path.c_str(), "rb");
        read = true;
        buffer.resize(RUN_BUFFER);
        buffer.resize(file ? std::fread(buffer.data(), sizeof(MoveCount), RUN_BUFFER, file) : 0);
        at = 0;
        if (buffer.empty()) {
            if (file)
                std::fclose(file);
            file = nullptr;
            return false;
        }
    }
    count = buffer[at++];
    return true;
}

void mergeCounts(const std::vector<CountSource*>& sources,
                 const std::function<void(const MoveCount&)>& sink) {
    struct Head {
        MoveCount count;
        std::size_t source;
    };
    auto later = [](const Head& a, const Head& b) { return countsBefore(b.count, a.count); };
    std::priority_queue<Head, std::vector<Head>, decltype(later)> heads(later);
    for (std::size_t i = 0; i < sources.size(); ++i)
        if (Head h{{}, i}; sources[i]->next(h.count))
            heads.push(h);
    while (!heads.empty()) {
        Head h = heads.top();
        heads.pop();
        MoveCount sum = h.count;
        if (sources[h.source]->next(h.count))
            heads.push(h);
        while (!heads.empty() && heads.top().count.key == sum.key &&
               heads.top().count.move == sum.move) {
            h = heads.top();
            heads.pop();
            sum.games += h.count.games;
            sum.whiteWins += h.count.whiteWins;
            sum.blackWins += h.count.blackWins;
            if (sources[h.source]->next(h.count))
                heads.push(h);
        }
        sink(sum);
    }
}
