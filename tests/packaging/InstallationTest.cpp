// The tree that an installation leaves.
#include "tests/packaging/ProgramFile.h"
#include "tests/support/TemporaryFolder.h"
#include "tool/LicenseText.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <string>

namespace {

using tavik::testing::outputOf;
using tavik::testing::TemporaryFolder;

void install(const TemporaryFolder& stage, const std::string& component) {
    outputOf({"/usr/bin/env", "DESTDIR=" + stage.path().string(), TAVIK_CMAKE, "--install",
              TAVIK_BUILD_TREE, "--component", component});
}

/// Every file below the folder, relative to it.
std::set<std::string> filesBelow(const std::filesystem::path& folder) {
    std::set<std::string> files;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
        if (!entry.is_directory()) files.insert(entry.path().lexically_relative(folder).string());
    }
    return files;
}

std::string contentsOf(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

TEST(Installation, PutsTheToolAndItsLicenseUnderTheInstallationFolder) {
    const TemporaryFolder stage;
    install(stage, "tool");
    const std::string folder = stage.path().string() + TAVIK_INSTALLED;

    const std::set<std::string> expected = {"LICENSE", "tavik"};
    EXPECT_EQ(expected, filesBelow(folder));
    EXPECT_EQ(expected.size(), filesBelow(stage.path()).size()) << "something lies elsewhere";

    using std::filesystem::perms;
    EXPECT_EQ(perms(0755), std::filesystem::status(folder + "/tavik").permissions());
    EXPECT_EQ(perms(0644), std::filesystem::status(folder + "/LICENSE").permissions());
}

TEST(Installation, PutsInAProgramThatRuns) {
    const TemporaryFolder stage;
    install(stage, "tool");
    EXPECT_EQ("- Version Information -\n"
              "Name: Norvo(R) Tavik\n"
              "Version: 3.0.14\n"
              "Description: Interact and configure Norvo SSDs.\n"
              "\n"
              "\n",
              outputOf({stage.path().string() + TAVIK_INSTALLED "/tavik", "version"}));
}

TEST(Installation, HasTheLicenseThatTheToolShows) {
    const TemporaryFolder stage;
    install(stage, "tool");
    EXPECT_EQ(std::string(cli::version::LICENSE_HEADING) + "\n" + cli::version::LICENSE_AGREEMENT,
              contentsOf(stage.path().string() + TAVIK_INSTALLED "/LICENSE"));
}

}  // namespace
