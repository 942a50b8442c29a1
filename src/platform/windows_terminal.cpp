// The terminal test on Windows: the runtime library's descriptor calls.
#include "platform/terminal.h"

#include <io.h>
#include <stdio.h>

bool isTerminal(std::FILE* stream) {
    return _isatty(_fileno(stream)) != 0;
}
