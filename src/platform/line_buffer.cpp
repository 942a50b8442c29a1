#include "platform/line_buffer.h"

#include <cstring>

int LineBuffer::available(Reader read) {
    if (!endSeen && !hasLine() && read(false) == Fill::END)
        endSeen = true;
    return endSeen || hasLine() ? 1 : 0;
}

int LineBuffer::readLine(char* out, std::size_t size, Reader read) {
    if (size == 0)
        return 0;
    while (!takeLine(out, size))
        if (endSeen || read(true) == Fill::END)
            return takeLast(out, size) ? 1 : 0;
    return 1;
}

bool LineBuffer::hasLine(std::size_t limit) {
    return nextLineLength(limit) >= 0;
}

bool LineBuffer::takeLine(char* out, std::size_t size) {
    if (size == 0)
        return false;
    const long length = nextLineLength(size < CAPACITY / 2 ? size : CAPACITY / 2);
    if (length < 0)
        return false;
    copyOut(out, std::size_t(length));
    return true;
}

bool LineBuffer::takeLast(char* out, std::size_t size) {
    const bool last = end > begin && !skippingLongLine && size > end - begin;
    if (last)
        copyOut(out, end - begin);
    clear();
    return last;
}

char* LineBuffer::space() {
    if (begin > 0) {
        std::memmove(pending, pending + begin, end - begin);
        end -= begin;
        begin = 0;
    }
    return pending + end;
}

void LineBuffer::clear() {
    begin = end      = 0;
    skippingLongLine = false;
    endSeen          = false;
}

// Throws away over-long lines and answers the length of the next whole line, or -1 when no
// whole line is buffered. A line of limit characters or more cannot be a command of either
// protocol, and half of one could be mistaken for another command.
long LineBuffer::nextLineLength(std::size_t limit) {
    for (;;) {
        const char* start = pending + begin;
        const void* feed  = std::memchr(start, '\n', end - begin);
        if (!feed) {
            if (end - begin >= limit) {
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

void LineBuffer::copyOut(char* out, std::size_t length) {
    std::memcpy(out, pending + begin, length);
    out[length] = 0;
    begin += length;
    if (begin < end)
        ++begin; // the line feed
    // Interfaces written for Windows end their lines with CR LF.
    if (length > 0 && out[length - 1] == '\r')
        out[length - 1] = 0;
}
