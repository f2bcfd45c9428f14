// The real tool and the real feature library in a folder of their own, with simulated drives.
#pragma once

#include "tests/support/ChildProcess.h"
#include "tests/support/TemporaryFolder.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>

namespace tavik::testing {

/// Where the real parts are.
struct RealParts {
    std::filesystem::path program;
    std::filesystem::path library;
    std::filesystem::path modules;  ///< a folder of firmware modules
};

/// The parts lie in `build/try/installed`, as for somebody who tries the tool in a checkout, and
/// the drives below it.
class SimulatedTool {
public:
    static constexpr const char* INSTALLED = "build/try/installed";

    /// With the default fleet, unless `fleet` is a description of another.
    explicit SimulatedTool(const RealParts& parts, const std::filesystem::path& fleet = {}) {
        const std::filesystem::path installed = path(INSTALLED);
        std::filesystem::create_directories(installed / "simulated_drives");
        std::filesystem::create_directory(path("opt"));
        put(parts.program, installed / "tavik");
        put(parts.library, installed / parts.library.filename());
        std::filesystem::copy(parts.modules, installed / "FirmwareModules");
        if (!fleet.empty()) put(fleet, drives("fleet.json"));
    }

    std::filesystem::path path(const std::string& name) const { return folder.path() / name; }

    /// A file among the drives, such as "state.json".
    std::filesystem::path drives(const std::string& name) const {
        return path(INSTALLED) / "simulated_drives" / name;
    }

    std::string read(const std::filesystem::path& file) const {
        std::ifstream stream(file, std::ios::binary);
        if (!stream) throw std::runtime_error("can't read " + file.string());
        return {std::istreambuf_iterator<char>(stream), {}};
    }

    /// The line as a shell runs it, which finds `tavik`.
    Program shell(const std::string& line) const {
        Program program;
        program.executable = "/bin/sh";
        program.arguments = {"-c", std::string(SETTINGS) + line};
        program.folder = folder.path();
        return program;
    }

    Ending type(const std::string& line) const { return run(shell(line)); }

private:
    // The leak sanitizer now and then trips over the thread-local data of a library that was opened
    // at run time. What the library leaks, the tests of its exports see.
#ifdef __SANITIZE_ADDRESS__
    static constexpr const char* SETTINGS = "PATH=\"$PWD/build/try/installed:$PATH\"\n"
                                            "export ASAN_OPTIONS=detect_leaks=0\n";
#else
    static constexpr const char* SETTINGS = "PATH=\"$PWD/build/try/installed:$PATH\"\n";
#endif

    /// A hard link where the file systems allow it: some megabytes for each test.
    static void put(const std::filesystem::path& from, const std::filesystem::path& to) {
        std::error_code failure;
        std::filesystem::create_hard_link(from, to, failure);
        if (failure) std::filesystem::copy_file(from, to);
    }

    TemporaryFolder folder;
};

}  // namespace tavik::testing
