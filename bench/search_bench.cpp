// pellix-bench search: a fixed-depth search over a fixed set of positions.
#include <cstdio>

#include "bench.h"

int benchSearch(int, char**) {
    std::printf("search benchmark: not built yet\n");
    return 1;
}
