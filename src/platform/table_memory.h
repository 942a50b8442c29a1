// Memory for the large tables the search probes at random (the transposition table): zeroed
// blocks, on Linux in 2 MB pages where the kernel has them, since a 4 KB page per probe
// would miss the address cache at nearly every node. One implementation file per system.
#pragma once

#include <cstddef>

// A zeroed block of `bytes`, or null when the process cannot have it.
void* allocateTable(std::size_t bytes);
// Gives back a block from allocateTable, of the same size; null does nothing.
void releaseTable(void* block, std::size_t bytes);
