// The terminal test on POSIX systems.
#include "platform/terminal.h"

#include <stdio.h>
#include <unistd.h>

bool isTerminal(std::FILE* stream) {
    return isatty(fileno(stream)) == 1;
}
