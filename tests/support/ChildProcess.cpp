#include "tests/support/ChildProcess.h"

#include <fcntl.h>
#include <poll.h>
#include <pty.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <stdexcept>
#include <string_view>
#include <utility>

namespace tavik::testing {

namespace {

[[noreturn]] void fail(const std::string& what) {
    throw std::runtime_error(what + ": " + std::strerror(errno));
}

class Descriptor {
public:
    Descriptor() = default;

    /// Moves the descriptor beyond the three standard ones, away from a program started later.
    static Descriptor take(int number) {
        if (number < 0) fail("no descriptor");
        Descriptor taken;
        taken.number = ::fcntl(number, F_DUPFD_CLOEXEC, 3);
        ::close(number);
        if (!taken.isOpen()) fail("no descriptor");
        return taken;
    }

    Descriptor(Descriptor&& other) noexcept : number(std::exchange(other.number, -1)) {}

    Descriptor& operator=(Descriptor&& other) noexcept {
        std::swap(number, other.number);
        return *this;
    }

    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    ~Descriptor() { close(); }

    void close() {
        if (isOpen()) ::close(std::exchange(number, -1));
    }

    bool isOpen() const { return number >= 0; }

    int get() const { return number; }

private:
    int number = -1;
};

/// The program's end of a stream and the end that stays here; either may be closed.
struct Stream {
    Descriptor theirs;
    Descriptor ours;
};

Descriptor openDevice(const char* path, int flags) {
    return Descriptor::take(::open(path, flags | O_CLOEXEC));
}

std::pair<Descriptor, Descriptor> makePipe() {
    std::array<int, 2> ends{};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0) fail("no pipe");
    Descriptor readEnd = Descriptor::take(ends[0]);
    return {std::move(readEnd), Descriptor::take(ends[1])};
}

void makeNonBlocking(const Descriptor& descriptor) {
    if (::fcntl(descriptor.get(), F_SETFL, O_NONBLOCK) != 0) fail("no non-blocking mode");
}

Stream makeInput(const Input& input) {
    Stream stream;
    switch (input.kind) {
    case Input::Kind::CLOSED:
        break;
    case Input::Kind::NULL_DEVICE:
        stream.theirs = openDevice("/dev/null", O_RDONLY);
        break;
    case Input::Kind::BYTES:
        std::tie(stream.theirs, stream.ours) = makePipe();
        break;
    case Input::Kind::TERMINAL: {
        winsize size{};
        size.ws_col = input.columns;
        size.ws_row = 24;
        int ours = -1;
        int theirs = -1;
        if (::openpty(&ours, &theirs, nullptr, nullptr, &size) != 0) fail("no terminal");
        stream.ours = Descriptor::take(ours);
        stream.theirs = Descriptor::take(theirs);
        break;
    }
    }
    if (stream.ours.isOpen()) makeNonBlocking(stream.ours);
    return stream;
}

Stream makeOutput(Output output) {
    Stream stream;
    switch (output) {
    case Output::CLOSED:
        break;
    case Output::FULL_DEVICE:
        stream.theirs = openDevice("/dev/full", O_WRONLY);
        break;
    case Output::CAPTURED:
        std::tie(stream.ours, stream.theirs) = makePipe();
        makeNonBlocking(stream.ours);
        break;
    case Output::BROKEN_PIPE:
        stream.theirs = makePipe().second;
        break;
    }
    return stream;
}

std::vector<char*> asArguments(std::vector<std::string>& words) {
    std::vector<char*> arguments;
    arguments.reserve(words.size() + 1);
    for (std::string& word : words)
        arguments.push_back(word.data());
    arguments.push_back(nullptr);
    return arguments;
}

void putInPlace(const Descriptor& theirs, int standard) {
    if (theirs.isOpen())
        ::dup2(theirs.get(), standard);
    else
        ::close(standard);
}

/// A program that is started and not yet waited for; killed if nobody does.
class Child {
public:
    Child(const Program& program, const Stream& input, const Stream& out, const Stream& err) {
        std::vector<std::string> words = program.arguments;
        words.insert(words.begin(),
                     program.name.empty() ? program.executable.string() : program.name);
        std::vector<std::string> variables{"PATH=/usr/local/sbin:/usr/local/bin:/usr/sbin:/usr/bin:"
                                           "/sbin:/bin"};
        const std::vector<char*> arguments = asArguments(words);
        const std::vector<char*> environment = asArguments(variables);
        id = ::fork();
        if (id < 0) fail("no process");
        if (id == 0) {
            putInPlace(input.theirs, STDIN_FILENO);
            putInPlace(out.theirs, STDOUT_FILENO);
            putInPlace(err.theirs, STDERR_FILENO);
            ::signal(SIGPIPE, SIG_DFL);
            if (::chdir(program.folder.c_str()) == 0)
                ::execve(program.executable.c_str(), arguments.data(), environment.data());
            ::_exit(NOT_STARTED);
        }
    }

    Child(const Child&) = delete;
    Child& operator=(const Child&) = delete;

    ~Child() {
        if (isWaitedFor) return;
        ::kill(id, SIGKILL);
        waitFor();
    }

    pid_t get() const { return id; }

    int waitFor() {
        int status = 0;
        while (::waitpid(id, &status, 0) < 0 && errno == EINTR)
            continue;
        isWaitedFor = true;
        return status;
    }

    static constexpr int NOT_STARTED = 127;

private:
    pid_t id = -1;
    bool isWaitedFor = false;
};

/// Appends what is there; closes the stream at its end.
void readFrom(Descriptor& stream, std::string& text) {
    std::array<char, 65536> bytes{};
    const ssize_t count = ::read(stream.get(), bytes.data(), bytes.size());
    if (count > 0)
        text.append(bytes.data(), static_cast<std::size_t>(count));
    else if (count == 0 || (errno != EAGAIN && errno != EINTR))
        stream.close();
}

/// Writes what the program takes; closes the stream when nothing is left or nobody reads.
void writeTo(Descriptor& stream, std::string_view& rest) {
    const ssize_t count = ::write(stream.get(), rest.data(), rest.size());
    if (count >= 0)
        rest.remove_prefix(static_cast<std::size_t>(count));
    else if (errno != EAGAIN && errno != EINTR)
        rest = {};
}

int millisecondsUntil(std::chrono::steady_clock::time_point deadline) {
    const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(
        deadline - std::chrono::steady_clock::now());
    return left.count() > 0 ? static_cast<int>(left.count()) : 0;
}

}  // namespace

Ending run(const Program& program) {
    const auto deadline = std::chrono::steady_clock::now() + program.timeout;
    ::signal(SIGPIPE, SIG_IGN);
    Stream input = makeInput(program.input);
    Stream out = makeOutput(program.out);
    Stream err = makeOutput(program.err);
    if (::access(program.executable.c_str(), X_OK) != 0)
        fail("no program " + program.executable.string());
    Child child(program, input, out, err);
    for (Stream* stream : {&input, &out, &err})
        stream->theirs.close();

    const bool isTerminal = program.input.kind == Input::Kind::TERMINAL;
    // A terminal's input ends by its end-of-file character, its line stays up.
    const std::string bytes = program.input.bytes + (isTerminal ? "\x04" : "");
    std::string_view rest = bytes;
    Descriptor life = Descriptor::take(static_cast<int>(::syscall(SYS_pidfd_open, child.get(), 0)));
    Ending ending;
    while (life.isOpen() || out.ours.isOpen() || err.ours.isOpen()) {
        if (rest.empty() && !isTerminal) input.ours.close();
        // A closed descriptor is -1, which poll passes over.
        std::array<pollfd, 4> polled{{{rest.empty() ? -1 : input.ours.get(), POLLOUT, 0},
                                      {out.ours.get(), POLLIN, 0},
                                      {err.ours.get(), POLLIN, 0},
                                      {life.get(), POLLIN, 0}}};
        const int ready = ::poll(polled.data(), polled.size(), millisecondsUntil(deadline));
        if (ready == 0)
            throw std::runtime_error("not ended in time: " + program.executable.string());
        if (polled[0].revents != 0) writeTo(input.ours, rest);
        if (polled[1].revents != 0) readFrom(out.ours, ending.out);
        if (polled[2].revents != 0) readFrom(err.ours, ending.err);
        if (polled[3].revents != 0) life.close();
    }
    const int status = child.waitFor();
    if (WIFSIGNALED(status))
        ending.signal = WTERMSIG(status);
    else
        ending.exitCode = WEXITSTATUS(status);
    return ending;
}

}  // namespace tavik::testing
