// The standard streams in whatever state the caller left them. All of it in copies of the process:
// what is tested holds for the rest of a process's life.
#include "tool/StandardStreams.h"

#include "tests/support/ForkedChild.h"
#include "tests/support/InstallationFixture.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <filesystem>
#include <iostream>
#include <string>

namespace tavik::standard_streams {
namespace {

using tavik::testing::Finding;
using tavik::testing::inForkedChild;

/// "R", "W" or "RW" and the path that the stream leads to; "closed" if it is not open.
std::string stateOf(int stream) {
    const int flags = ::fcntl(stream, F_GETFL);
    if (flags < 0) return "closed";
    const int access = flags & O_ACCMODE;
    const std::string path =
        std::filesystem::read_symlink("/proc/self/fd/" + std::to_string(stream)).string();
    return (access == O_RDONLY ? "R " : access == O_WRONLY ? "W " : "RW ") + path;
}

std::string states() {
    return stateOf(0) + ", " + stateOf(1) + ", " + stateOf(2);
}

/// A pipe in the place of a stream; the other end's number is returned.
int pipeAt(int stream) {
    std::array<int, 2> ends{};
    if (::pipe(ends.data()) != 0) ::_exit(93);
    const int mine = stream == STDIN_FILENO ? ends[0] : ends[1];
    ::dup2(mine, stream);
    ::close(mine);
    return stream == STDIN_FILENO ? ends[1] : ends[0];
}

class StandardStreams : public tavik::testing::InstallationFixture {};

TEST_F(StandardStreams, AreNeverLeftClosed) {
    const std::string in = "R /dev/null";
    const std::string out = "W /dev/null";
    for (unsigned closed = 0; closed < 8; ++closed) {
        SCOPED_TRACE(closed);
        const Finding finding = inForkedChild([closed] {
            for (int stream = 0; stream < 3; ++stream) {
                const int file = ::open("/dev/zero", O_RDWR);
                ::dup2(file, stream);
                if (file > 2) ::close(file);
            }
            for (int stream = 0; stream < 3; ++stream) {
                if ((closed >> stream & 1U) != 0) ::close(stream);
            }
            prepare();
            return states();
        });
        const std::string open = "RW /dev/zero";
        EXPECT_EQ(finding.text, ((closed & 1U) != 0 ? in : open) + ", " +
                                    ((closed & 2U) != 0 ? out : open) + ", " +
                                    ((closed & 4U) != 0 ? out : open));
    }
}

TEST_F(StandardStreams, TakeAllOfTheOutput) {
    const Finding finding = inForkedChild([] {
        prepare();
        const int file = ::open("output", O_WRONLY | O_CREAT, 0600);
        ::dup2(file, STDOUT_FILENO);
        const bool first = writeOutput(std::string("a\0\xFF\n", 4));
        const bool empty = writeOutput("");
        const bool large = writeOutput(std::string(1000000, 'x'));
        return std::string(first && empty && large ? "written" : "failed");
    });

    EXPECT_EQ(finding.text, "written");
    EXPECT_TRUE(get("output") == std::string("a\0\xFF\n", 4) + std::string(1000000, 'x'));
}

TEST_F(StandardStreams, SurviveAFullDevice) {
    const Finding finding = inForkedChild([] {
        prepare();
        ::dup2(::open("/dev/full", O_WRONLY), STDOUT_FILENO);
        return std::string(writeOutput("text") ? "written" : "failed");
    });

    EXPECT_EQ(finding.text, "failed");
    EXPECT_EQ(finding.signal, 0);
}

TEST_F(StandardStreams, SurviveAPipeWithoutAReader) {
    const Finding finding = inForkedChild([] {
        prepare();
        ::close(pipeAt(STDOUT_FILENO));
        return std::string(writeOutput("text") ? "written" : "failed");
    });

    EXPECT_EQ(finding.text, "failed");
    EXPECT_EQ(finding.signal, 0);
}

TEST_F(StandardStreams, SurviveALimitOfTheFilesSize) {
    const Finding finding = inForkedChild([] {
        prepare();
        ::dup2(::open("output", O_WRONLY | O_CREAT, 0600), STDOUT_FILENO);
        const rlimit limit = {3, 3};
        ::setrlimit(RLIMIT_FSIZE, &limit);
        return std::string(writeOutput("text") ? "written" : "failed");
    });

    EXPECT_EQ(finding.text, "failed");
    EXPECT_EQ(finding.signal, 0);
    EXPECT_EQ(get("output"), "tex");
}

TEST_F(StandardStreams, FailToWriteOnceTheyAreClosed) {
    const Finding finding = inForkedChild([] {
        prepare();
        ::close(STDOUT_FILENO);
        return std::string(writeOutput("text") ? "written" : "failed");
    });

    EXPECT_EQ(finding.text, "failed");
}

TEST_F(StandardStreams, WaitForAReaderThatIsSlow) {
    const Finding finding = inForkedChild([] {
        prepare();
        const int reader = pipeAt(STDOUT_FILENO);
        ::fcntl(STDOUT_FILENO, F_SETFL, O_NONBLOCK);
        const std::string text(1000000, 'x');
        const pid_t writer = ::fork();
        if (writer == 0) {
            ::close(reader);
            tavik::testing::detail::leave(writeOutput(text) ? 0 : 1);
        }
        ::close(STDOUT_FILENO);
        const std::string read = tavik::testing::detail::receiveAll(reader);
        int status = 0;
        ::waitpid(writer, &status, 0);
        return std::string(status == 0 && read == text ? "all" : "not all");
    });

    EXPECT_EQ(finding.text, "all");
}

TEST_F(StandardStreams, LeaveTheSignalsAsTheyAreToOtherPrograms) {
    const Finding finding = inForkedChild([] {
        prepare();
        std::string handling;
        for (const int signal : {SIGPIPE, SIGXFSZ}) {
            struct sigaction action = {};
            ::sigaction(signal, nullptr, &action);
            handling += action.sa_handler == SIG_IGN   ? "ignored "
                        : action.sa_handler == SIG_DFL ? "default "
                                                       : "handled ";
        }
        return handling;
    });

    EXPECT_EQ(finding.text, "handled handled ");
}

TEST_F(StandardStreams, ReadOneCharacterAtATime) {
    const Finding finding = inForkedChild([] {
        const int writer = pipeAt(STDIN_FILENO);
        [[maybe_unused]] const ssize_t written = ::write(writer, "yes\n", 4);
        ::close(writer);
        prepare();
        char answer = 'n';
        std::cin.get(answer);
        return std::string(1, answer) + "|" + tavik::testing::detail::receiveAll(STDIN_FILENO);
    });

    EXPECT_EQ(finding.text, "y|es\n");
}

}  // namespace
}  // namespace tavik::standard_streams
