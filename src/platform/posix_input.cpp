// Standard input on POSIX systems: descriptor 0 read with read(2), and poll(2) as the
// non-blocking test. Stdio's buffered stdin is never used: its hidden buffer would make
// poll() lie about waiting commands.
#include "platform/line_buffer.h"

#include <cerrno>
#include <poll.h>
#include <unistd.h>

long readSystemInput(char* space, std::size_t room, bool wait) {
    for (;;) {
        pollfd fd{0, POLLIN, 0};
        const int ready = poll(&fd, 1, wait ? -1 : 0);
        if (ready < 0 && errno == EINTR)
            continue;
        if (ready < 0 || (fd.revents & POLLNVAL))
            return -1;
        if (ready == 0)
            return 0;
        const ssize_t n = read(0, space, room);
        if (n < 0 && (errno == EINTR || errno == EAGAIN || errno == EWOULDBLOCK)) {
            if (!wait)
                return 0;
            continue;
        }
        return n <= 0 ? -1 : long(n);
    }
}
