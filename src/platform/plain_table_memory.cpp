// Table memory on Windows and in the browser: the C heap. Large pages on Windows need a
// privilege that users' accounts do not have, and WebAssembly's memory has one page size.
#include "platform/table_memory.h"

#include <cstdlib>

void* allocateTable(std::size_t bytes) {
    return bytes ? std::calloc(bytes, 1) : nullptr;
}

void releaseTable(void* block, std::size_t) {
    std::free(block);
}
