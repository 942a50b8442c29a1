// The engine's own input buffer: bytes as the system hands them over, given out line by
// line. Lines too long for a command are dropped whole, a carriage return before the line
// feed is removed, and the end of input is kept until a reader has been told. The system's
// input files fill it; nothing here reads a device.
#pragma once

#include <cstddef>

// What one read of the system's input found.
enum class Fill { DATA, END, NOTHING };

// The system's read, for the systems whose input calls are those of polled_input.cpp: up to
// `room` bytes into `space`; their number, 0 when none are waiting (only when wait is false),
// or -1 at the end of input or on an error. With wait true it blocks until some come.
long readSystemInput(char* space, std::size_t room, bool wait);

class LineBuffer {
public:
    // A system's read: bytes into space(), kept with added(). With wait true it blocks until
    // some come or the input ends; with wait false it answers NOTHING rather than block.
    using Reader = Fill (*)(bool wait);

    // The two input calls (platform/input.h) over this buffer, for a system whose reader can
    // be asked not to block: 1 when a line is waiting or the input has ended, else 0.
    int available(Reader read);
    // The next line into out, reading as needed; 0 at the end of input.
    int readLine(char* out, std::size_t size, Reader read);

    // Twice the longest line the engine keeps, so that a full line and the start of the
    // next one fit together.
    static constexpr std::size_t CAPACITY = 8192;

    // True when a whole line of fewer than `limit` characters is buffered; an over-long one
    // in front of it is thrown away on the way.
    bool hasLine(std::size_t limit = CAPACITY / 2);
    // Copies the next whole line into out (size bytes, so lines of at most size - 1
    // characters); false when there is none.
    bool takeLine(char* out, std::size_t size);
    // True when any character is buffered, a part of a line included.
    bool hasBytes() const { return end > begin; }
    // At the end of input: the last line, even without its line feed; false when nothing is
    // left. Leaves the buffer empty.
    bool takeLast(char* out, std::size_t size);

    // Where the next bytes go, and how many fit; added() keeps the ones written there.
    char* space();
    std::size_t spaceLeft() const { return CAPACITY - end; }
    void added(std::size_t count) { end += count; }

    bool endSeen = false; // a read found the end or an error; the next reader reports it
    void clear();

private:
    long nextLineLength(std::size_t limit);
    void copyOut(char* out, std::size_t length);

    char pending[CAPACITY];
    std::size_t begin = 0, end = 0;
    bool skippingLongLine = false; // the rest of a line that did not fit is being thrown away
};
