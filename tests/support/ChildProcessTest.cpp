// The runner of programs, over a few that every machine has.
#include "tests/support/ChildProcess.h"

#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>
#include <stdexcept>
#include <string>

namespace {

using tavik::testing::Ending;
using tavik::testing::Input;
using tavik::testing::Output;
using tavik::testing::Program;
using tavik::testing::run;
using tavik::testing::TemporaryFolder;

Program shell(const std::string& script) {
    Program program;
    program.executable = "/bin/sh";
    program.arguments = {"-c", script};
    program.folder = "/";
    return program;
}

TEST(ChildProcess, CapturesBothOutputsApartAndTheExitCode) {
    const Ending ending = run(shell("printf 'a\\n'; printf b >&2; exit 7"));
    EXPECT_EQ("a\n", ending.out);
    EXPECT_EQ("b", ending.err);
    EXPECT_EQ(7, ending.exitCode);
    EXPECT_EQ(0, ending.signal);
}

TEST(ChildProcess, TellsTheSignalThatEndedTheProgram) {
    const Ending ending = run(shell("kill -TERM $$"));
    EXPECT_EQ(-1, ending.exitCode);
    EXPECT_EQ(SIGTERM, ending.signal);
}

TEST(ChildProcess, PassesWordsAsTheyAre) {
    Program program;
    program.executable = "/usr/bin/printf";
    program.arguments = {"<%s>", "a b", "", "*", "$HOME"};
    program.folder = "/";
    EXPECT_EQ("<a b><><*><$HOME>", run(program).out);
}

TEST(ChildProcess, TellsTheProgramItsName) {
    Program program = shell("echo $0");
    EXPECT_EQ("/bin/sh\n", run(program).out);
    program.name = "another";
    EXPECT_EQ("another\n", run(program).out);
}

TEST(ChildProcess, RunsInTheFolderAndWithNoEnvironmentButThePath) {
    const TemporaryFolder folder;
    Program program;
    program.executable = "/usr/bin/env";
    program.arguments = {};
    program.folder = folder.path();
    EXPECT_EQ("PATH=/usr/local/sbin:/usr/local/bin:/usr/sbin:/usr/bin:/sbin:/bin\n",
              run(program).out);
    program.executable = "/bin/pwd";
    program.arguments = {"-P"};
    EXPECT_EQ(std::filesystem::canonical(folder.path()).string() + "\n", run(program).out);
}

TEST(ChildProcess, CarriesMoreThanAPipeHoldsInBothDirections) {
    Program program = shell("cat");
    program.input = {Input::Kind::BYTES, std::string(1 << 20, 'x'), 0};
    EXPECT_TRUE(program.input.bytes == run(program).out);
}

TEST(ChildProcess, LetsAProgramLeaveItsInputUnread) {
    Program program = shell("exit 3");
    program.input = {Input::Kind::BYTES, std::string(1 << 20, 'x'), 0};
    EXPECT_EQ(3, run(program).exitCode);
}

TEST(ChildProcess, GivesEachKindOfInput) {
    Program program = shell("readlink /proc/self/fd/0 || echo closed");
    EXPECT_EQ("/dev/null\n", run(program).out);
    program.input.kind = Input::Kind::CLOSED;
    program = shell("[ -e /proc/$$/fd/0 ] || echo closed");
    program.input.kind = Input::Kind::CLOSED;
    EXPECT_EQ("closed\n", run(program).out);
    program = shell("stty size; cat");
    program.input = {Input::Kind::TERMINAL, "typed\n", 43};
    EXPECT_EQ("24 43\ntyped\n", run(program).out);
}

TEST(ChildProcess, GivesEachKindOfOutput) {
    Program program = shell("name=$(readlink /proc/$$/fd/1); echo $name >&2");
    program.out = Output::FULL_DEVICE;
    EXPECT_EQ("/dev/full\n", run(program).err);

    program = shell("[ -e /proc/$$/fd/1 ] || echo closed >&2");
    program.out = Output::CLOSED;
    EXPECT_EQ("closed\n", run(program).err);

    program.executable = "/bin/cat";
    program.arguments = {"/proc/self/status"};
    program.out = Output::BROKEN_PIPE;
    EXPECT_EQ(SIGPIPE, run(program).signal);

    program = shell("printf text >&2; printf out");
    program.err = Output::FULL_DEVICE;
    EXPECT_EQ("out", run(program).out);
    EXPECT_EQ("", run(program).err);
}

TEST(ChildProcess, KillsAProgramThatDoesNotEnd) {
    Program program;
    program.folder = "/";
    program.executable = "/usr/bin/tail";
    program.arguments = {"-f", "/dev/null"};
    program.timeout = std::chrono::seconds(0);
    EXPECT_THROW(run(program), std::runtime_error);
}

TEST(ChildProcess, RefusesAProgramThatIsNotThere) {
    Program program;
    program.executable = "/absent/program";
    program.arguments = {};
    program.folder = "/";
    EXPECT_THROW(run(program), std::runtime_error);
}

}  // namespace
