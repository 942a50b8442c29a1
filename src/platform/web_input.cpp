// Standard input in a browser or under Node. Emscripten's stdin cannot tell whether a read
// would block, so command text comes instead from the module's own input (web_module.js),
// which the host's event loop fills and which gives that loop a turn while the engine waits
// or polls. The bytes go into the engine's line buffer like those of any other system.
#include "platform/input.h"
#include "platform/line_buffer.h"

#include <emscripten.h>

namespace {

LineBuffer pending;

// Up to `size` waiting bytes into `out`: their number, 0 when none are waiting (after waiting
// for some when `wait` is 1), or -1 once the input is closed and drained. The program may
// be suspended inside (cmake/PellixWeb.cmake names it to Asyncify).
EM_JS(int, readQueuedInput, (char* out, int size, int wait),
      { return Module["pellixReadInput"](out, size, wait); });

Fill fillOnce(bool wait) {
    const int n = readQueuedInput(pending.space(), int(pending.spaceLeft()), wait ? 1 : 0);
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
