// Runs a piece of a test in a copy of the process, for what would spoil the process itself:
// closed streams, dropped rights, a signal.
#pragma once

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/types.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <stdexcept>
#include <string>

#ifdef TAVIK_COVERAGE
extern "C" void __gcov_dump(void);
#endif

namespace tavik::testing {

/// How a copy ended, and the text that it handed back.
struct Finding {
    int exitCode = -1;  ///< -1 if a signal ended it
    int signal = 0;
    std::string text;
};

namespace detail {

inline void sendAll(int number, const std::string& text) {
    std::size_t done = 0;
    while (done < text.size()) {
        const ssize_t count = ::write(number, text.data() + done, text.size() - done);
        if (count < 0 && errno != EINTR) ::_exit(90);
        if (count > 0) done += static_cast<std::size_t>(count);
    }
}

inline std::string receiveAll(int number) {
    std::string text;
    char part[4096];
    while (true) {
        const ssize_t count = ::read(number, part, sizeof part);
        if (count == 0 || (count < 0 && errno != EINTR)) return text;
        if (count > 0) text.append(part, static_cast<std::size_t>(count));
    }
}

/// Ends the copy at once. Counts of the lines that it ran are kept where the build makes any.
[[noreturn]] inline void leave(int exitCode) {
#ifdef TAVIK_COVERAGE
    // A copy without rights can't write its counts, and would say so where the test looks.
    ::dup2(::open("/dev/null", O_RDWR), STDERR_FILENO);
    // A limit that the piece of a test has set must not cut the counts of all tests short.
    const rlimit none{RLIM_INFINITY, RLIM_INFINITY};
    if (::setrlimit(RLIMIT_FSIZE, &none) == 0 && ::setrlimit(RLIMIT_AS, &none) == 0)
        ::__gcov_dump();
#endif
    ::_exit(exitCode);
}

}  // namespace detail

/// Runs `body` in a forked copy, whose exit code is 0 unless `body` throws. No destructor and no
/// exit handler of the test runs there.
inline Finding inForkedChild(const std::function<std::string()>& body) {
    constexpr int FAR_NUMBER = 200;  // out of the way of the standard streams
    int ends[2];
    if (::pipe(ends) != 0) throw std::runtime_error("no pipe");
    std::fflush(nullptr);  // or the copy would write what is buffered once more
    const pid_t child = ::fork();
    if (child < 0) throw std::runtime_error("no child process");
    if (child == 0) {
        ::close(ends[0]);
        if (::dup2(ends[1], FAR_NUMBER) < 0) ::_exit(91);
        ::close(ends[1]);
        try {
            detail::sendAll(FAR_NUMBER, body());
        } catch (...) {
            detail::leave(92);
        }
        detail::leave(0);
    }
    ::close(ends[1]);
    Finding finding;
    finding.text = detail::receiveAll(ends[0]);
    ::close(ends[0]);
    int status = 0;
    while (::waitpid(child, &status, 0) < 0 && errno == EINTR)
        continue;
    if (WIFEXITED(status)) finding.exitCode = WEXITSTATUS(status);
    if (WIFSIGNALED(status)) finding.signal = WTERMSIG(status);
    return finding;
}

/// Gives the superuser's rights away for good. To be called in a forked copy only.
inline void becomeOrdinaryUser() {
    constexpr uid_t NOBODY = 65534;
    if (::geteuid() != 0) return;
    if (::setgid(NOBODY) != 0 || ::setuid(NOBODY) != 0) throw std::runtime_error("still root");
}

}  // namespace tavik::testing
