// A test whose working directory is a folder of its own with an installation folder `opt` in it.
#pragma once

#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace tavik::testing {

/// The working directory belongs to the whole process: it is put back after each test.
class InstallationFixture : public ::testing::Test {
protected:
    InstallationFixture() {
        // Other users must be able to get in for tests of their rights.
        std::filesystem::permissions(folder.path(), std::filesystem::perms(0755));
        std::filesystem::create_directory(folder.path() / "opt");
        std::filesystem::current_path(folder.path());
    }

    ~InstallationFixture() override { std::filesystem::current_path(before); }

    static void put(const std::string& path, const std::string& bytes) {
        std::ofstream(path, std::ios::binary) << bytes;
    }

    static std::string get(const std::string& path) {
        std::ifstream stream(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), {}};
    }

    static std::vector<std::string> namesIn(const std::string& path) {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(path)) {
            names.push_back(entry.path().filename().string());
        }
        std::sort(names.begin(), names.end());
        return names;
    }

private:
    const std::filesystem::path before = std::filesystem::current_path();
    TemporaryFolder folder;
};

}  // namespace tavik::testing
