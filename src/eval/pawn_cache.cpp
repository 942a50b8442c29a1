// Allocation and clearing of the pawn-structure cache; the lookup is inline.
#include "eval/pawn_cache.h"

PawnCache::PawnCache() : entries(new PawnEntry[std::size_t(1) << ENTRY_BITS]) {
    clear();
}

void PawnCache::clear() {
    for (std::size_t i = 0; i < (std::size_t(1) << ENTRY_BITS); ++i)
        entries[i] = PawnEntry{{~Bitboard{0}, ~Bitboard{0}}, {}, {}, {}, {}};
}
