#include "tool/StandardStreams.h"

#include <cerrno>
#include <csignal>
#include <cstddef>
#include <cstdio>
#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

namespace tavik::standard_streams {

namespace {

/// A handler, unlike SIG_IGN, is not handed on to the programs that a library may start.
void survive(int signal) {
    struct sigaction action = {};
    action.sa_handler = [](int) {};
    action.sa_flags = SA_RESTART;
    ::sigaction(signal, &action, nullptr);
}

}  // namespace

void prepare() {
    // Opening takes the lowest free number, so each closed stream gets its own in turn.
    for (int stream = STDIN_FILENO; stream <= STDERR_FILENO; ++stream) {
        if (::fcntl(stream, F_GETFD) == -1 && errno == EBADF) {
            static_cast<void>(::open("/dev/null", stream == STDIN_FILENO ? O_RDONLY : O_WRONLY));
        }
    }
    survive(SIGPIPE);
    survive(SIGXFSZ);
    std::setvbuf(stdin, nullptr, _IONBF, 0);
}

bool writeOutput(std::string_view text) {
    while (!text.empty()) {
        const ssize_t written = ::write(STDOUT_FILENO, text.data(), text.size());
        if (written > 0) {
            text.remove_prefix(static_cast<std::size_t>(written));
        } else if (written < 0 && errno == EAGAIN) {
            // Somebody made the stream non-blocking: wait until it takes more.
            pollfd output = {STDOUT_FILENO, POLLOUT, 0};
            ::poll(&output, 1, -1);
        } else if (written == 0 || errno != EINTR) {
            return false;
        }
    }
    return true;
}

}  // namespace tavik::standard_streams
