// Standard input in a browser or under Node. Emscripten's stdin cannot tell whether a read
// would block, so command text comes instead through a queue in a SharedArrayBuffer that
// another thread writes into (web_module.js holds its reader). The bytes go into the
// engine's line buffer like those of any other system.
#include "platform/input.h"
#include "platform/line_buffer.h"

#include <emscripten.h>

namespace {

LineBuffer pending;

// Up to `size` queued bytes into `out`: their number, 0 when none are queued (after waiting
// for some when `wait` is 1), or -1 once the writer has closed the queue and it is empty.
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
