// Table memory on Linux and other POSIX systems: an anonymous mapping (zeroed, committed
// page by page as the search first touches it), cut to a 2 MB boundary and marked for
// transparent huge pages. Where the kernel has none, or mode "never", the advice is ignored
// and the table works in small pages.
#include "platform/table_memory.h"

#include <cstdint>
#include <sys/mman.h>

namespace {

constexpr std::size_t HUGE_PAGE = std::size_t(2) << 20;

// Whole huge pages, so that both cuts of the mapping fall on page boundaries.
std::size_t roundedUp(std::size_t bytes) {
    return (bytes + HUGE_PAGE - 1) & ~(HUGE_PAGE - 1);
}

} // namespace

void* allocateTable(std::size_t bytes) {
    const std::size_t size = roundedUp(bytes);
    // Mapped with a huge page to spare, so that a 2 MB boundary falls inside; the parts
    // before and after the aligned block go back at once.
    const std::size_t mapped = size + HUGE_PAGE;
    if (bytes == 0 || size < bytes || mapped < size)
        return nullptr;
    void* base = mmap(nullptr, mapped, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (base == MAP_FAILED)
        return nullptr;
    const std::uintptr_t start   = reinterpret_cast<std::uintptr_t>(base);
    const std::uintptr_t aligned = (start + HUGE_PAGE - 1) & ~(HUGE_PAGE - 1);
    const std::size_t head = aligned - start, tail = mapped - head - size;
    if (head)
        munmap(base, head);
    if (tail)
        munmap(reinterpret_cast<void*>(aligned + size), tail);
    void* block = reinterpret_cast<void*>(aligned);
#ifdef MADV_HUGEPAGE
    madvise(block, size, MADV_HUGEPAGE);
#endif
    return block;
}

void releaseTable(void* block, std::size_t bytes) {
    if (block)
        munmap(block, roundedUp(bytes));
}
