// Simulated drives under several processes and under processes that are killed, and the files that
// a whole run opens.
#include "tests/support/SimulatedTool.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <ctime>
#include <random>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace tavik::process {
namespace {

using testing::Ending;
using testing::SimulatedTool;

// Each start of a program under a sanitizer costs many times as much.
#if defined(__SANITIZE_ADDRESS__) || defined(TAVIK_COVERAGE)
constexpr int KILLS = 15;
#else
constexpr int KILLS = 100;
#endif

SimulatedTool newTool() {
    return SimulatedTool({PROCESS_PROGRAM, SIMULATED_LIBRARY, SIMULATED_MODULES});
}

/// Starts the line and returns at once.
pid_t start(const testing::Program& shell) {
    const pid_t child = ::fork();
    if (child != 0) return child;
    // The shell is replaced by the tool: no other process survives the kill.
    const std::string line = shell.arguments.at(1);
    const int nothing = ::open("/dev/null", O_RDWR);
    ::dup2(nothing, STDIN_FILENO);
    ::dup2(nothing, STDOUT_FILENO);
    ::dup2(nothing, STDERR_FILENO);
    if (::chdir(shell.folder.c_str()) == 0) {
        ::execl("/bin/sh", "/bin/sh", "-c", line.c_str(), nullptr);
    }
    ::_exit(127);
}

void waitFor(std::chrono::microseconds time) {
    timespec rest{time.count() / 1000000, (time.count() % 1000000) * 1000};
    while (::nanosleep(&rest, &rest) != 0)
        continue;
}

/// A command that changes a drive, and what shows whether it has.
struct Change {
    const char* name;
    const char* command;
    const char* show;
};

const Change CHANGES[] = {
    {"format", "tavik start -force -norvossd 1 -nvmeformat LBAFormat=1 SecureEraseSetting=1",
     "tavik show -identify -namespace 1 -norvossd 1"},
    {"firmware", "tavik load -force -norvossd 0",
     "tavik show -nvmelog FirmwareSlotInfo -norvossd 0"},
    {"set", "tavik set -norvossd 2 TempThreshold=71",
     "tavik show -display TempThreshold -norvossd 2"},
};

class KilledCommand : public ::testing::TestWithParam<Change> {
protected:
    using Time = std::chrono::microseconds;

    /// What the drive shows after the command began with the drives as saved and was killed.
    std::string showAfterKillAt(Time instant) {
        std::ofstream(tool.drives("state.json"), std::ios::binary) << saved;
        const pid_t child = start(tool.shell("exec " + std::string(GetParam().command)));
        EXPECT_GT(child, 0);
        waitFor(instant);
        ::kill(child, SIGKILL);
        EXPECT_EQ(::waitpid(child, nullptr, 0), child);
        const Ending ending = tool.type(GetParam().show);
        EXPECT_EQ(ending.exitCode, 0) << ending.err;
        return ending.out;
    }

    const SimulatedTool tool = newTool();
    const std::string before = tool.type(GetParam().show).out;
    const std::string saved = tool.read(tool.drives("state.json"));
};

TEST_P(KilledCommand, LeavesTheDrivesAsBeforeOrAfterIt) {
    const auto begin = std::chrono::steady_clock::now();
    ASSERT_EQ(tool.type(GetParam().command).exitCode, 0);
    auto length = std::chrono::duration_cast<Time>(std::chrono::steady_clock::now() - begin);
    const std::string after = tool.type(GetParam().show).out;
    ASSERT_NE(before, after);

    std::mt19937 random(20211);  // which instants, doesn't matter; that they differ, does
    std::uniform_int_distribution<long> instants(0, length.count() * 6 / 5);
    std::set<std::string> seen;
    for (int kill = 0; kill < KILLS; ++kill)
        seen.insert(showAfterKillAt(Time(instants(random))));
    // How far a command comes is up to the machine: goes on until both have been there.
    while (!seen.contains(before) && !HasFailure())
        seen.insert(showAfterKillAt(Time(0)));
    while (!seen.contains(after) && !HasFailure())
        seen.insert(showAfterKillAt(length *= 2));
    EXPECT_EQ(seen, (std::set<std::string>{before, after}));
}

INSTANTIATE_TEST_SUITE_P(SimulatedDrives, KilledCommand, ::testing::ValuesIn(CHANGES),
                         [](const auto& one) { return std::string(one.param.name); });

TEST(SimulatedDrives, TwoProcessesAtOnceLoseNoChange) {
    const SimulatedTool tool = newTool();
    // Each refused command adds to the drive's count of errors.
    const std::string refused = "for i in 1 2 3 4 5 6 7 8 9 10; do "
                                "tavik detach -namespace 9 -norvossd 1 2>&1; "
                                "tavik set -norvossd $1 TempThreshold=$((50 + i)); done";
    const std::string line = "count() {\n" + refused + "\n}\ncount 0 & count 2 & wait";
    const std::string show = "tavik show -display TempThreshold -norvossd";
    const std::string errors = "tavik show -display ErrorInfoLogEntries -sensor -norvossd 1";
    ASSERT_NE(tool.type(errors).out.find("ErrorInfoLogEntries : 0\n"), std::string::npos);
    ASSERT_EQ(tool.type(line).exitCode, 0);
    EXPECT_NE(tool.type(show + " 0").out.find("TempThreshold : 60\n"), std::string::npos);
    EXPECT_NE(tool.type(show + " 2").out.find("TempThreshold : 60\n"), std::string::npos);
    EXPECT_NE(tool.type(errors).out.find("ErrorInfoLogEntries : 20\n"), std::string::npos)
        << tool.type(errors).out;
}

#ifndef __SANITIZE_ADDRESS__

/// The paths that the lines open, each once.
std::set<std::string> filesOpenedBy(const SimulatedTool& tool,
                                    const std::vector<std::string>& lines) {
    const std::string list = tool.path("opened").string();
    for (const std::string& line : lines) {
        const Ending ending =
            tool.type("OPENED_FILES='" + list + "' LD_PRELOAD='" + OPEN_RECORDER + "' " + line);
        EXPECT_EQ(ending.exitCode, 0) << line << ending.out << ending.err;
    }
    std::set<std::string> paths;
    std::istringstream stream(tool.read(list));
    for (std::string path; std::getline(stream, path);)
        paths.insert(path);
    return paths;
}

TEST(SimulatedDrives, AWholeRunOpensNothingButItsOwnFiles) {
    const SimulatedTool tool = newTool();
    const auto opened = filesOpenedBy(
        tool, {"tavik show -all -norvossd", "tavik show -smart -norvossd 4",
               "tavik set -norvossd 0 TempThreshold=70", "tavik load -force -norvossd 0",
               "tavik delete -force -norvossd 3", "tavik dump -nlog -norvossd 0"});
    const std::string own = tool.path(SimulatedTool::INSTALLED).string() + "/";
    EXPECT_TRUE(opened.contains(own + "simulated_drives/lock"));
    for (const std::string& path : opened) {
        // The tool's own are its configuration, the folder of modules that it names, and the dump,
        // which is written beside its place.
        const bool isOfLibrary = path.starts_with(own);
        const bool isOfTool = path.starts_with("opt/") || path == "./" ||
                              path.starts_with("./.tavik-") || path == "nlog_NVX4510A0001K1P6.bin";
        EXPECT_TRUE(isOfLibrary || isOfTool) << path;
    }
}

#endif

}  // namespace
}  // namespace tavik::process
