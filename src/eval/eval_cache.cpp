// Sizing, clearing and releasing the evaluation cache; probe and store are inline.
#include "eval/eval_cache.h"

#include "board/trace.h"

#include <cstdlib>
#include <cstring>

bool EvalHashTable::init(int megabytes) {
    trace("Init Eval HashTable : %d Mo", megabytes);
    destroy();
    // The count must fit its 32-bit field; a request that would wrap gets no table.
    const bool fits = megabytes > 0 && megabytes < 65536;
    entryCount      = fits ? std::uint32_t(megabytes) * 65536u : 0;
    indexMask       = entryCount ? entryCount - 1 : 0;
    trace("size   = %d", entryCount);
    trace("modulo = %d", indexMask);
    if (entryCount)
        entries = static_cast<EvalCacheEntry*>(std::calloc(entryCount, 16));
    if (!entries) {
        trace("Eval HashTable : out of memory");
        entryCount = indexMask = 0;
        return false;
    }
    return true;
}

void EvalHashTable::clear() {
    if (entries)
        std::memset(entries, 0, std::size_t(entryCount) * sizeof(EvalCacheEntry));
}

void EvalHashTable::destroy() {
    std::free(entries);
    entries    = nullptr;
    entryCount = indexMask = 0;
}
