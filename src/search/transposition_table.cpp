// Sizing, clearing and releasing the transposition table, and the engine object's own.
#include "search/transposition_table.h"

#include "board/chess_board.h"
#include "board/trace.h"

#include <cstdlib>
#include <cstring>

std::uint32_t roundedHashMegabytes(std::uint32_t requested) {
    // 0 and 1 give 0, 3 gives 4, 1025 to 2048 give 2048, and anything larger gives 0. The
    // README documents these sizes for the Hash key of pellix.ini, and configuration files
    // written for it must get the same table, the odd ends included.
    std::uint32_t p = 1, result = 0;
    if (requested > 1) {
        do {
            p *= 2;
            if (p >= requested)
                result = p;
        } while (p < requested && p <= 1024);
    }
    return result;
}

bool HashTable::init(std::uint32_t requestedMegabytes) {
    trace("Init HashTable : %d Mo", requestedMegabytes);
    release();
    megabytes  = roundedHashMegabytes(requestedMegabytes);
    entryCount = (megabytes << 20) >> 4;
    indexMask  = entryCount - 1;
    dirty      = 0;
    if (entryCount == 0)
        return true; // no table: probes miss, stores do nothing
    entries = static_cast<HashEntry*>(std::calloc(entryCount, sizeof(HashEntry)));
    if (!entries) {
        trace("HashTable : out of memory");
        entryCount = indexMask = 0;
        return false;
    }
    return true;
}

void HashTable::clear() {
    if (entries)
        std::memset(entries, 0, std::size_t(entryCount) * sizeof(HashEntry));
}

void HashTable::release() {
    std::free(entries);
    entries = nullptr;
}

void ChessBoard::resizeHashTable(std::uint32_t requestedMegabytes) {
    if (!hashTable)
        hashTable = {new HashTable, [](HashTable* table) {
                         table->release();
                         delete table;
                     }};
    hashTable->init(requestedMegabytes);
}

void ChessBoard::releaseHashTable() {
    hashTable->release();
}
