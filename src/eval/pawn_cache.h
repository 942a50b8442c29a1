// The pawn-structure cache: what the pawn terms find in one arrangement of pawns, kept so
// that the many positions of a search sharing it compute it once. An entry holds the pawns
// themselves, so a slot shared by two structures can never answer for the wrong one.
#pragma once

#include "eval/eval_info.h"

#include <cstdint>
#include <memory>

struct PawnEntry {
    Bitboard pawns[2]; // by colour; both full in a slot never written, which no board has
    Bitboard pawnAttackMap[2];
    Bitboard passed[2];
    std::int8_t pawnRank[2][PAWN_FILE_SLOTS];
    std::int16_t structure[2]; // doubled, isolated and backward pawns, from each side's view
};

class PawnCache {
public:
    // 16384 entries of 72 bytes: 1.1 MB, allocated once with the engine. A search meets a
    // few thousand structures at most, so nearly every probe after the first hits.
    static constexpr int ENTRY_BITS = 14;

    PawnCache();
    // The slot for these pawns, holding them already or to be filled by the caller.
    PawnEntry& slot(Bitboard white, Bitboard black) {
        // Multiplying mixes every pawn into the top bits; the two colours get different
        // multipliers so that swapping them moves the slot.
        const std::uint64_t mixed =
            (white * 0x9E3779B97F4A7C15ull) ^ (black * 0xC2B2AE3D27D4EB4Full);
        return entries[mixed >> (64 - ENTRY_BITS)];
    }
    // Forgets every structure; the scores never go stale, so only tests need it.
    void clear();

private:
    std::unique_ptr<PawnEntry[]> entries;
};
