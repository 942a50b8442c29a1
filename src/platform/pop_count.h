// The population count of the engine's bitboards. x86-64 processors made before about 2008
// (Core 2, early Atoms, Phenoms) lack the POPCNT instruction, and Debian's and Windows'
// baseline builds may not assume it; without it the search runs about 11 % more
// instructions. So the x86-64 build asks the processor once, at start, and branches on the
// answer at every count: the branch always goes one way and costs well under 1 %.
#pragma once

#include <bit>
#include <cstdint>

#if defined(__x86_64__) && !defined(__POPCNT__)
inline const bool cpuHasPopcnt = [] {
    __builtin_cpu_init();
    return bool(__builtin_cpu_supports("popcnt"));
}();
#endif

inline int popCount(std::uint64_t b) {
#if defined(__x86_64__) && !defined(__POPCNT__)
    if (cpuHasPopcnt) {
        // volatile, because a plain asm is a pure computation to the compiler, which may then
        // if-convert the branch and run popcnt before it knows the answer: a SIGILL on a
        // processor without the instruction.
        std::uint64_t n;
        asm volatile("popcnt %1, %0" : "=r"(n) : "r"(b) : "cc");
        return int(n);
    }
#endif
    return std::popcount(b);
}
