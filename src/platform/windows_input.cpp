// Standard input on Windows: the console or pipe handle read with ReadFile into the engine's
// line buffer. The non-blocking test asks the console for its pending events and a pipe for
// the bytes it holds, after what the line buffer holds already.
#include "platform/input.h"
#include "platform/line_buffer.h"

#include <windows.h>

namespace {

LineBuffer pending;
bool pollInitialised = false;
HANDLE stdinHandle   = nullptr;
bool stdinIsPipe     = false;

// The first test finds out what standard input is. A console stops reporting window and
// mouse events (mode bits 0x8 and 0x10), which are no commands, and drops what is pending.
// Answers false when there is no usable handle.
bool initialise() {
    pollInitialised = true;
    stdinHandle     = GetStdHandle(STD_INPUT_HANDLE);
    if (stdinHandle == nullptr || stdinHandle == INVALID_HANDLE_VALUE)
        return false;
    DWORD mode  = 0;
    stdinIsPipe = !GetConsoleMode(stdinHandle, &mode);
    if (!stdinIsPipe) {
        SetConsoleMode(stdinHandle, mode & ~DWORD(ENABLE_WINDOW_INPUT | ENABLE_MOUSE_INPUT));
        FlushConsoleInputBuffer(stdinHandle);
    }
    return true;
}

// One blocking read into the free space (the test above is what keeps a search from
// blocking here); END at the end of input or on an error.
Fill fill(bool) {
    if (!pollInitialised)
        initialise();
    DWORD got   = 0;
    char* space = pending.space();
    if (!ReadFile(stdinHandle, space, DWORD(pending.spaceLeft()), &got, nullptr) || got == 0)
        return Fill::END;
    pending.added(got);
    return Fill::DATA;
}

} // namespace

int inputAvailable() {
    if (!pollInitialised && !initialise())
        return 0;
    // What was read already and not yet handed out counts first.
    if (pending.endSeen || pending.hasLine() || pending.hasBytes())
        return 1;
    if (!stdinIsPipe) {
        // Typing a key makes several events; a single one is not taken as a command.
        DWORD events = 0;
        return GetNumberOfConsoleInputEvents(stdinHandle, &events) && events > 1 ? 1 : 0;
    }
    DWORD waiting = 0;
    if (PeekNamedPipe(stdinHandle, nullptr, 0, nullptr, &waiting, nullptr))
        return waiting > 0 ? 1 : 0;
    // A failed peek is taken as input (a closed pipe: the reader then fails at once), except
    // where peeking is not supported at all, as on a Unix pipe under Wine: there every poll
    // would block the search in the reader until the interface sent another line, and every
    // game on a clock would be lost on time.
    return GetLastError() == ERROR_NOT_SUPPORTED ? 0 : 1;
}

int readInputLine(char* out, std::size_t size) {
    return pending.readLine(out, size, fill);
}

void resetInput() {
    pending.clear();
}
