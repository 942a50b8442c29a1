// Standard input on POSIX systems: descriptor 0 read with read(2) into the engine's line
// buffer, and poll(2) as the non-blocking test. Stdio's buffered stdin is never used: its
// hidden buffer would make poll() lie about waiting commands.
#include "platform/input.h"
#include "platform/line_buffer.h"

#include <cerrno>
#include <poll.h>
#include <unistd.h>

namespace {

LineBuffer pending;

// One read into the free space. With wait false it reads only when poll says it will not
// block.
Fill fillOnce(bool wait) {
    char* space = pending.space();
    for (;;) {
        pollfd fd{0, POLLIN, 0};
        const int ready = poll(&fd, 1, wait ? -1 : 0);
        if (ready < 0 && errno == EINTR)
            continue;
        if (ready < 0 || (fd.revents & POLLNVAL))
            return Fill::END;
        if (ready == 0)
            return Fill::NOTHING;
        const ssize_t n = read(0, space, pending.spaceLeft());
        if (n < 0 && (errno == EINTR || errno == EAGAIN || errno == EWOULDBLOCK)) {
            if (!wait)
                return Fill::NOTHING;
            continue;
        }
        if (n <= 0)
            return Fill::END;
        pending.added(std::size_t(n));
        return Fill::DATA;
    }
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
