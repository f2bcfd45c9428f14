// Runs a program to its end and tells what it wrote and how it ended.
#pragma once

#include <chrono>
#include <filesystem>
#include <string>
#include <vector>

namespace tavik::testing {

/// What the program finds on descriptor 0.
struct Input {
    enum class Kind { BYTES, CLOSED, NULL_DEVICE, TERMINAL };

    Kind kind = Kind::NULL_DEVICE;
    std::string bytes;           ///< for `BYTES` and `TERMINAL`; the input ends behind them
    unsigned short columns = 0;  ///< the width of a `TERMINAL`
};

/// Where an output of the program leads.
enum class Output {
    CAPTURED,
    CLOSED,
    FULL_DEVICE,  ///< every write fails for lack of space
    BROKEN_PIPE   ///< a pipe whose reader is gone
};

struct Program {
    std::filesystem::path executable;  ///< absolute
    std::vector<std::string> arguments;
    std::string name;              ///< what it is told that it is called; its path if empty
    std::filesystem::path folder;  ///< its working directory
    Input input;
    Output out = Output::CAPTURED;
    Output err = Output::CAPTURED;
    std::chrono::seconds timeout{120};
};

struct Ending {
    int exitCode = -1;  ///< -1 if a signal ended it
    int signal = 0;     ///< 0 if it ended by itself
    std::string out;
    std::string err;
};

/// The program has `PATH` as its whole environment. Throws std::runtime_error if it can't be
/// started, or did not end in time and was killed.
Ending run(const Program& program);

}  // namespace tavik::testing
