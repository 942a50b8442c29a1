// The MT19937 generator of Matsumoto and Nishimura, with the published single-word and
// array seedings. The Zobrist keys depend on its exact output sequence.
#pragma once

#include <cstdint>

class Mt19937 {
public:
    explicit Mt19937(std::uint32_t seed = 5489) { seedWord(seed); }
    void seedWord(std::uint32_t seed);
    void seedArray(const std::uint32_t* key, int length);
    std::uint32_t next();
    std::uint64_t next64() { // first output in the high half
        std::uint64_t high = next();
        return high << 32 | next();
    }

private:
    static constexpr int N = 624, M = 397;
    std::uint32_t state[N];
    int index = N + 1;
};
