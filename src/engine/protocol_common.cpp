// Helpers shared by the UCI and XBoard handlers, and the commands both tables hold.
#include "engine/protocol_common.h"

#include "engine/front_end.h"
#include "tools/console_modes.h"

#include <cctype>
#include <climits>
#include <cstdlib>
#include <cstring>

bool startsWith(const char* line, const char* prefix) {
    return std::strncmp(line, prefix, std::strlen(prefix)) == 0;
}

const char* afterFirstBlank(const char* line) {
    const char* blank = std::strchr(line, ' ');
    return blank ? blank + 1 : nullptr;
}

int readNumber(const char* text) {
    const long value = std::strtol(text, nullptr, 10);
    if (value > INT_MAX)
        return INT_MAX;
    if (value < INT_MIN)
        return INT_MIN;
    return int(value);
}

bool scanNumber(const char*& text, int& value) {
    while (std::isspace(static_cast<unsigned char>(*text)))
        ++text;
    const char* digits = text + (*text == '-' || *text == '+');
    if (!std::isdigit(static_cast<unsigned char>(*digits)))
        return false;
    value = readNumber(text);
    text  = digits;
    while (std::isdigit(static_cast<unsigned char>(*text)))
        ++text;
    return true;
}

bool scanWord(const char*& text, char* out, std::size_t size) {
    while (std::isspace(static_cast<unsigned char>(*text)))
        ++text;
    if (!*text || size == 0)
        return false;
    std::size_t length = 0;
    for (; *text && !std::isspace(static_cast<unsigned char>(*text)); ++text)
        if (length + 1 < size)
            out[length++] = *text;
    out[length] = 0;
    return true;
}

float clockMilliseconds(std::int64_t milliseconds) {
    return milliseconds < 0 ? 0.0f : float(milliseconds);
}

std::uint32_t budgetMicroseconds(std::int64_t microseconds) {
    if (microseconds < 0)
        return 0;
    return microseconds > std::int64_t(UINT32_MAX) ? UINT32_MAX : std::uint32_t(microseconds);
}

void quitCommand(FrontEnd& frontEnd, const char*) {
    if (frontEnd.searchRunning())
        frontEnd.board->stopSearch = 1;
    frontEnd.quitRequested = 1;
}

void ignoreCommand(FrontEnd&, const char*) {}

// Deeper than the move stack reaches counts nothing more, and keeps depth + 1 from
// overflowing in the divide listing.
constexpr int DEEPEST_PERFT = 1000;

namespace {

// The depth after the command word, capped, for one of the console walks.
void walkCommand(FrontEnd& frontEnd, const char* line, void (*print)(ChessBoard&, int)) {
    if (const char* value = afterFirstBlank(line)) {
        const int depth = readNumber(value);
        print(*frontEnd.board, depth < DEEPEST_PERFT ? depth : DEEPEST_PERFT);
    }
}

} // namespace

void perftCommand(FrontEnd& frontEnd, const char* line) {
    walkCommand(frontEnd, line, printPerftTable);
}

void divideCommand(FrontEnd& frontEnd, const char* line) {
    walkCommand(frontEnd, line, printDivideListing);
}
