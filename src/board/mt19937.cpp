// The reference MT19937: state refill, tempering and both seedings as first published.
#include "board/mt19937.h"

void Mt19937::seedWord(std::uint32_t seed) {
    state[0] = seed;
    for (index = 1; index < N; ++index)
        state[index] = 1812433253u * (state[index - 1] ^ (state[index - 1] >> 30)) + index;
}

void Mt19937::seedArray(const std::uint32_t* key, int length) {
    seedWord(19650218u);
    int i = 1, j = 0;
    for (int k = N > length ? N : length; k; --k) {
        state[i] = (state[i] ^ ((state[i - 1] ^ (state[i - 1] >> 30)) * 1664525u)) + key[j] + j;
        ++i;
        ++j;
        if (i >= N) {
            state[0] = state[N - 1];
            i        = 1;
        }
        if (j >= length)
            j = 0;
    }
    for (int k = N - 1; k; --k) {
        state[i] = (state[i] ^ ((state[i - 1] ^ (state[i - 1] >> 30)) * 1566083941u)) - i;
        ++i;
        if (i >= N) {
            state[0] = state[N - 1];
            i        = 1;
        }
    }
    state[0] = 0x80000000u; // the most significant bit is 1: the state is never all zero
}

std::uint32_t Mt19937::next() {
    constexpr std::uint32_t upper = 0x80000000u, lower = 0x7fffffffu, matrix = 0x9908b0dfu;
    if (index >= N) {
        if (index == N + 1)
            seedWord(5489);
        int k = 0;
        for (; k < N - M; ++k) {
            std::uint32_t y = (state[k] & upper) | (state[k + 1] & lower);
            state[k]        = state[k + M] ^ (y >> 1) ^ ((y & 1) ? matrix : 0);
        }
        for (; k < N - 1; ++k) {
            std::uint32_t y = (state[k] & upper) | (state[k + 1] & lower);
            state[k]        = state[k + (M - N)] ^ (y >> 1) ^ ((y & 1) ? matrix : 0);
        }
        std::uint32_t y = (state[N - 1] & upper) | (state[0] & lower);
        state[N - 1]    = state[M - 1] ^ (y >> 1) ^ ((y & 1) ? matrix : 0);
        index           = 0;
    }
    std::uint32_t y = state[index++];
    y ^= y >> 11;
    y ^= (y << 7) & 0x9d2c5680u;
    y ^= (y << 15) & 0xefc60000u;
    y ^= y >> 18;
    return y;
}
