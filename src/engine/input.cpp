// Reads descriptor 0 with read(2) and poll(2) into one buffer and hands it out line by line.
// Stdio's buffered stdin is never used: its hidden buffer would make poll() lie about
// waiting commands.
#include "engine/input.h"

#include "board/trace.h"

#include <cerrno>
#include <cstring>
#include <poll.h>
#include <unistd.h>

namespace {

// Twice the longest line the engine keeps, so that a full line and the start of the next
// one fit together.
constexpr std::size_t INPUT_CAPACITY = 8192;

char pending[INPUT_CAPACITY];
std::size_t begin = 0, end = 0;
bool skippingLongLine = false; // the rest of a line that did not fit is being thrown away
bool endSeen          = false; // a read found the end or an error; the next reader reports it

enum class Fill { DATA, END, NOTHING };

// One read into the free space. With wait false it reads only when poll says it will not
// block.
Fill fillOnce(bool wait) {
    if (begin > 0) {
        std::memmove(pending, pending + begin, end - begin);
        end -= begin;
        begin = 0;
    }
    for (;;) {
        pollfd fd{0, POLLIN, 0};
        const int ready = poll(&fd, 1, wait ? -1 : 0);
        if (ready < 0 && errno == EINTR)
            continue;
        if (ready < 0 || (fd.revents & POLLNVAL))
            return Fill::END;
        if (ready == 0)
            return Fill::NOTHING;
        const ssize_t n = read(0, pending + end, INPUT_CAPACITY - end);
        if (n < 0 && (errno == EINTR || errno == EAGAIN || errno == EWOULDBLOCK)) {
            if (!wait)
                return Fill::NOTHING;
            continue;
        }
        if (n <= 0)
            return Fill::END;
        end += std::size_t(n);
        return Fill::DATA;
    }
}

// Throws away over-long lines and answers the length of the next whole line, or -1 when
// no whole line is buffered. A line longer than limit - 1 characters cannot be a command
// of either protocol, and half of one could be mistaken for another command.
long nextLineLength(std::size_t limit) {
    for (;;) {
        const char* start = pending + begin;
        const void* feed  = std::memchr(start, '\n', end - begin);
        if (!feed) {
            if (end - begin >= limit) {
                trace("line too long");
                skippingLongLine = true;
                begin = end = 0;
            }
            return -1;
        }
        const std::size_t length = std::size_t(static_cast<const char*>(feed) - start);
        if (!skippingLongLine && length < limit)
            return long(length);
        skippingLongLine = false;
        begin += length + 1;
    }
}

void takeLine(char* out, std::size_t length) {
    std::memcpy(out, pending + begin, length);
    out[length] = 0;
    begin += length;
    if (begin < end)
        ++begin; // the line feed
    // Interfaces written for Windows end their lines with CR LF.
    if (length > 0 && out[length - 1] == '\r')
        out[length - 1] = 0;
}

} // namespace

int inputAvailable() {
    if (endSeen || nextLineLength(INPUT_CAPACITY / 2) >= 0)
        return 1;
    const Fill fill = fillOnce(false);
    if (fill == Fill::END)
        endSeen = true;
    return endSeen || nextLineLength(INPUT_CAPACITY / 2) >= 0 ? 1 : 0;
}

int readInputLine(char* out, std::size_t size) {
    if (size == 0)
        return 0;
    const std::size_t limit = size < INPUT_CAPACITY / 2 ? size : INPUT_CAPACITY / 2;
    for (;;) {
        const long length = nextLineLength(limit);
        if (length >= 0) {
            takeLine(out, std::size_t(length));
            return 1;
        }
        if (!endSeen && fillOnce(true) != Fill::END)
            continue;
        // The end of input: a last line without its line feed still counts once.
        endSeen = false;
        if (end > begin && !skippingLongLine) {
            takeLine(out, end - begin);
            return 1;
        }
        begin = end      = 0;
        skippingLongLine = false;
        return 0;
    }
}

void resetInput() {
    begin = end      = 0;
    skippingLongLine = false;
    endSeen          = false;
}
