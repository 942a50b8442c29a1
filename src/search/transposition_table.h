// The transposition table: one flat array of 16-byte entries indexed by the low bits of the
// key, one entry a slot, always replaced. The entry's packing and what an entry proves for
// a window are here, inline, as the searches probe and store at every node; the sizing
// lives in transposition_table.cpp.
#pragma once

#include "board/types.h"

#include <cstdint>

enum BoundType : std::uint32_t { BOUND_EXACT = 0, BOUND_UPPER = 1, BOUND_LOWER = 2 };

struct HashEntry {
    std::uint32_t keyLow;
    std::uint32_t keyHigh;
    Move move;
    std::uint32_t info; // bound 0-1, depth 2-9, score sign 16, score magnitude 17-31
};
static_assert(sizeof(HashEntry) == 16, "four entries share a cache line");

// Packing of the info word.
constexpr std::uint32_t packInfo(BoundType bound, int depth, int score) {
    return std::uint32_t(bound) | (std::uint32_t(depth) & 0xFF) << 2 | (score < 0 ? 0x10000u : 0u) |
           std::uint32_t(score < 0 ? -score : score) << 17;
}
constexpr BoundType infoBound(std::uint32_t info) {
    return BoundType(info & 3);
}
constexpr int infoDepth(std::uint32_t info) {
    return int((info >> 2) & 0xFF);
}
constexpr int infoScore(std::uint32_t info) {
    return (info & 0x10000) ? -int(info >> 17) : int(info >> 17);
}

// A score no table entry can hold: "the table gives no cut-off".
constexpr int NO_CUTOFF = 123456;

// What a table entry proves for the window, or NO_CUTOFF.
constexpr int tableCutoff(std::uint32_t info, int alpha, int beta) {
    const int score = infoScore(info);
    switch (infoBound(info)) {
    case BOUND_EXACT:
        return score;
    case BOUND_UPPER:
        return score <= alpha ? alpha : NO_CUTOFF;
    case BOUND_LOWER:
        return score >= beta ? beta : NO_CUTOFF;
    default:
        return NO_CUTOFF;
    }
}

struct HashTable {
    HashEntry* entries       = nullptr;
    std::uint32_t entryCount = 0;
    std::uint32_t indexMask  = 0;
    std::uint8_t dirty       = 0;
    std::uint32_t megabytes  = 0; // the rounded size actually allocated

    // Sizes the table from a request in megabytes (rounded by roundedHashMegabytes: 0, 1
    // and anything above 2048 give no table) and allocates it zeroed, halving the size
    // until the allocation succeeds. False when not even 1 megabyte could be had.
    bool init(std::uint32_t requestedMegabytes);
    void clear();
    void release();

    // Asks for the key's slot ahead of the probe, so the memory load overlaps the work
    // done before it. A table of no entries prefetches its null base: harmless.
    void prefetch(std::uint64_t key) const {
        __builtin_prefetch(entries + (std::uint32_t(key) & indexMask));
    }

    // A table of 0 entries is never indexed: probes miss and stores do nothing.
    const HashEntry* probe(std::uint64_t key) const {
        if (!entries)
            return nullptr;
        const HashEntry& e = entries[std::uint32_t(key) & indexMask];
        return e.keyLow == std::uint32_t(key) && e.keyHigh == std::uint32_t(key >> 32) ? &e
                                                                                       : nullptr;
    }
    void store(std::uint64_t key, Move move, BoundType bound, int depth, int score) {
        if (!entries)
            return;
        HashEntry& e = entries[std::uint32_t(key) & indexMask];
        e = {std::uint32_t(key), std::uint32_t(key >> 32), move, packInfo(bound, depth, score)};
    }
};

// The rounding of a request to a power of two in megabytes.
std::uint32_t roundedHashMegabytes(std::uint32_t requested);
