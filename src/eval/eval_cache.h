// A direct-mapped cache of static evaluations keyed by the position key, one 16-byte entry
// a slot, always replaced. The evaluation does not consult it: it is ready to be switched on.
#pragma once

#include <cstdint>

struct EvalCacheEntry {
    std::uint32_t keyLow;
    std::uint32_t keyHigh;
    std::int16_t score;
    std::uint8_t unused[6];
};
static_assert(sizeof(EvalCacheEntry) == 16, "the sizing counts 16 bytes an entry");

// What probe answers when the key is not in the table.
constexpr int EVAL_CACHE_MISS = 123456;

struct EvalHashTable {
    EvalCacheEntry* entries  = nullptr;
    std::uint32_t entryCount = 0;
    std::uint32_t indexMask  = 0;

    // 65536 entries a megabyte. A size that is not a power of two leaves some entries
    // unreachable, never out of range. False when the table cannot be had (out of memory,
    // or a size of no entries); the cache is then empty and every probe misses.
    bool init(int megabytes);
    // 0 and the stored score on a hit, EVAL_CACHE_MISS otherwise.
    int probe(std::uint32_t keyLow, std::uint32_t keyHigh, int& score) const {
        if (!entries)
            return EVAL_CACHE_MISS;
        const EvalCacheEntry& e = entries[keyLow & indexMask];
        if (e.keyLow != keyLow || e.keyHigh != keyHigh)
            return EVAL_CACHE_MISS;
        score = e.score;
        return 0;
    }
    void store(std::uint32_t keyLow, std::uint32_t keyHigh, int score) {
        if (!entries)
            return;
        EvalCacheEntry& e = entries[keyLow & indexMask];
        e.keyLow          = keyLow;
        e.keyHigh         = keyHigh;
        e.score           = std::int16_t(score);
    }
    void clear();
    void destroy();
};
