// Sizing, clearing and releasing the transposition table, and the engine object's own.
#include "search/transposition_table.h"

#include "board/chess_board.h"
#include "board/trace.h"
#include "platform/table_memory.h"

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
    megabytes = roundedHashMegabytes(requestedMegabytes);
    dirty     = 0;
    if (megabytes == 0) {
        entryCount = 0;
        indexMask  = entryCount - 1;
        return true; // no table: probes miss, stores do nothing
    }
    // A size the process cannot have (1 or 2 GB asked of a 32-bit process, or of a machine
    // without the memory) gives the largest smaller power of two that it can have.
    for (; megabytes != 0; megabytes /= 2) {
        entryCount = (megabytes << 20) >> 4;
        entries =
            static_cast<HashEntry*>(allocateTable(std::size_t(entryCount) * sizeof(HashEntry)));
        if (entries)
            break;
        trace("HashTable : out of memory");
    }
    if (!entries)
        entryCount = 0;
    indexMask = entries ? entryCount - 1 : 0;
    return entries != nullptr;
}

void HashTable::clear() {
    if (entries)
        std::memset(entries, 0, std::size_t(entryCount) * sizeof(HashEntry));
}

void HashTable::release() {
    releaseTable(entries, std::size_t(entryCount) * sizeof(HashEntry));
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
