// pellix-bench eval: evaluation speed, and the term-by-term breakdown of given positions.
#include <cstdio>

#include "bench.h"

int benchEval(int, char**) {
    std::printf("eval benchmark: not built yet\n");
    return 1;
}
