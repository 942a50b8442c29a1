// input-probe: shows what the platform's input test and line reader make of this process's
// standard input. It prints "available N" each time the test's answer changes and
// "line TEXT" for each line it reads, and "end" at the end of input. The input tests drive
// it through a pipe, natively and, as a Windows program, under Wine.
#include "platform/input.h"

#include <chrono>
#include <cstdio>
#include <thread>

int main() {
    std::setvbuf(stdout, nullptr, _IONBF, 0);
    int shown = -1;
    for (;;) {
        const int available = inputAvailable();
        if (available != shown)
            std::printf("available %d\n", shown = available);
        if (!available) {
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
            continue;
        }
        char line[4096];
        if (!readInputLine(line, sizeof line)) {
            std::printf("end\n");
            return 0;
        }
        std::printf("line %s\n", line);
        shown = -1;
    }
}
