// Formats a protocol line and writes it, newline included, in one write so that a line
// never reaches the interface in pieces.
#include "platform/send_command.h"

#include <cstdarg>
#include <cstdio>

int sendCommand(const char* format, ...) {
    char line[8192];
    va_list args;
    va_start(args, format);
    int length = std::vsnprintf(line, sizeof line - 1, format, args);
    va_end(args);
    if (length < 0)
        return length;
    if (length > int(sizeof line) - 2)
        length = int(sizeof line) - 2;
    line[length++]      = '\n';
    std::size_t written = std::fwrite(line, 1, std::size_t(length), stdout);
    std::fflush(stdout);
    return int(written);
}
