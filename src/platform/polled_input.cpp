// The input calls over the engine's line buffer for the systems whose read can be asked not
// to block (POSIX, the browser and Node): each system supplies only readSystemInput, in its
// own file. Windows cannot ask a pipe read not to block and keeps its own calls.
#include "platform/input.h"
#include "platform/line_buffer.h"

namespace {

LineBuffer pending;

Fill fillOnce(bool wait) {
    const long n = readSystemInput(pending.space(), pending.spaceLeft(), wait);
    if (n < 0)
        return Fill::END;
    if (n == 0)
        return Fill::NOTHING;
    pending.added(std::size_t(n));
    return Fill::DATA;
}

} // namespace

int inputAvailable() {
    return pending.available(fillOnce);
}

int readInputLine(char* out, std::size_t size) {
    return pending.readLine(out, size, fillOnce);
}

void resetInput() {
    pending.clear();
}
