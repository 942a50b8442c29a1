// Standard input in a browser or under Node. Emscripten's stdin cannot tell whether a read
// would block, so command text comes instead from the module's own input (web_module.js),
// which the host's event loop fills and which gives that loop a turn while the engine waits
// or polls.
#include "platform/line_buffer.h"

#include <emscripten.h>

// Up to `size` waiting bytes into `out`: their number, 0 when none are waiting (after waiting
// for some when `wait` is 1), or -1 once the input is closed and drained. The program may
// be suspended inside (cmake/PellixWeb.cmake names it to Asyncify).
EM_JS(int, readQueuedInput, (char* out, int size, int wait),
      { return Module["pellixReadInput"](out, size, wait); });

long readSystemInput(char* space, std::size_t room, bool wait) {
    return readQueuedInput(space, int(room), wait ? 1 : 0);
}
