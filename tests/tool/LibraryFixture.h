// A test of its own installation folder with the stand-in for the feature library in it. The
// library stays in the process that opened it, so only a forked copy of the test ever opens it.
#pragma once

#include "tests/support/ForkedChild.h"
#include "tests/support/InstallationFixture.h"

#include <fcntl.h>
#include <unistd.h>

#include <filesystem>
#include <functional>
#include <stdexcept>
#include <string>

namespace tavik::testing {

class LibraryFixture : public InstallationFixture {
protected:
    LibraryFixture() { std::filesystem::create_directory("standin"); }

    /// Puts a variant of the library into the installation folder.
    static void install(const std::string& variant) {
        const std::filesystem::path file = "opt/libNorvo.SSDFeatures.so.2.0.0";
        std::filesystem::remove(file);
        std::filesystem::create_symlink(
            std::filesystem::path(TAVIK_STANDIN_VARIANTS) / variant / file.filename(), file);
    }

    /// Tells the library what to do.
    static void order(const std::string& name, const std::string& text) {
        put("standin/" + name, text);
    }

    /// Forgets orders and calls.
    static void clearOrders() {
        std::filesystem::remove_all("standin");
        std::filesystem::create_directory("standin");
    }

    static std::string calls() { return get("standin/calls"); }

    /// What `body` returns in a copy of the process, which must end well and write nothing to
    /// standard output or standard error by itself.
    static std::string inChild(const std::function<std::string()>& body) {
        const Finding finding = inForkedChild([&body] {
            const int file = ::open("streams", O_WRONLY | O_CREAT | O_TRUNC, 0600);
            if (file < 0 || ::dup2(file, STDOUT_FILENO) < 0 || ::dup2(file, STDERR_FILENO) < 0)
                throw std::runtime_error("no file for the streams");
            return body();
        });
        EXPECT_EQ(finding.signal, 0);
        EXPECT_EQ(finding.exitCode, 0);
        EXPECT_EQ(get("streams"), "");
        return finding.text;
    }
};

}  // namespace tavik::testing
