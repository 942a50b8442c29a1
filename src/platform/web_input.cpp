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

enum class Fill { DATA, END, NOTHING };

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
    if (pending.endSeen || pending.hasLine())
        return 1;
    if (fillOnce(false) == Fill::END)
        pending.endSeen = true;
    return pending.endSeen || pending.hasLine() ? 1 : 0;
}

int readInputLine(char* out, std::size_t size) {
    if (size == 0)
        return 0;
    while (!pending.takeLine(out, size)) {
        if (pending.endSeen)
            return pending.takeLast(out, size) ? 1 : 0;
        const Fill fill = fillOnce(true);
        if (fill == Fill::END)
            pending.endSeen = true;
    }
    return 1;
}

void resetInput() {
    pending.clear();
}
