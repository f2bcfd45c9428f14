// The packages that are handed out: the Debian package and the tarball.
#include "tests/packaging/ProgramFile.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <set>
#include <string>

namespace {

using tavik::testing::linesOf;
using tavik::testing::outputOf;
using tavik::testing::TemporaryFolder;
using tavik::testing::wordsOf;

/// The package of this kind, made in `folder`.
std::string makePackage(const TemporaryFolder& folder, const std::string& generator,
                        const std::string& ending) {
    outputOf({TAVIK_CPACK, "--config", TAVIK_BUILD_TREE "/CPackConfig.cmake", "-G", generator, "-B",
              folder.path().string()});
    for (const auto& entry : std::filesystem::directory_iterator(folder.path())) {
        if (entry.path().string().ends_with(ending)) return entry.path().string();
    }
    return "";
}

/// Mode, owner and name of each file of a listing in the form of `tar -tv`; folders are left out.
std::set<std::string> filesIn(const std::string& listing) {
    std::set<std::string> files;
    for (const std::string& line : linesOf(listing)) {
        const auto words = wordsOf(line);
        if (words.size() < 6 || words[0].front() == 'd') continue;
        files.insert(words[0] + " " + words[1] + " " + words[5]);
    }
    return files;
}

std::string field(const std::string& package, const std::string& name) {
    return outputOf({TAVIK_DPKG_DEB, "-f", package, name});
}

TEST(Package, TheDebianPackageHasItsNameAndFields) {
    const TemporaryFolder folder;
    const std::string package = makePackage(folder, "DEB", ".deb");
    const std::string architecture = wordsOf(outputOf({"dpkg", "--print-architecture"})).at(0);

    EXPECT_EQ("tavik_3.0.14_" + architecture + ".deb",
              std::filesystem::path(package).filename().string());
    EXPECT_EQ("tavik\n", field(package, "Package"));
    EXPECT_EQ("3.0.14\n", field(package, "Version"));
    EXPECT_EQ(architecture + "\n", field(package, "Architecture"));
    EXPECT_EQ("Norvo <support@norvo.example>\n", field(package, "Maintainer"));
    EXPECT_EQ("admin\n", field(package, "Section"));
    EXPECT_TRUE(field(package, "Description")
                    .starts_with("Command-line management tool for Norvo solid-state drives\n"));
    // Taken from the program itself, with the oldest version that has its symbols.
    EXPECT_NE(std::string::npos, field(package, "Depends").find("libc6 (>= 2."));
}

TEST(Package, TheDebianPackageHoldsTheToolAndItsLicense) {
    const TemporaryFolder folder;
    const std::string package = makePackage(folder, "DEB", ".deb");
    const std::set<std::string> expected = {
        "-rw-r--r-- root/root ." TAVIK_INSTALLED "/LICENSE",
        "-rwxr-xr-x root/root ." TAVIK_INSTALLED "/tavik",
    };
    EXPECT_EQ(expected, filesIn(outputOf({TAVIK_DPKG_DEB, "-c", package})));
}

TEST(Package, TheTarballHoldsTheToolAndItsLicenseUnderTheirAbsoluteFolder) {
    const TemporaryFolder folder;
    const std::string tarball = makePackage(folder, "TGZ", ".tar.gz");
    EXPECT_EQ("tavik-3.0.14-Linux-" TAVIK_ARCHITECTURE ".tar.gz",
              std::filesystem::path(tarball).filename().string());

    const std::string root = std::string(TAVIK_INSTALLED).substr(1);
    std::set<std::string> names;
    for (const std::string& name : linesOf(outputOf({"tar", "-tzf", tarball}))) {
        if (!name.ends_with('/')) names.insert(name.starts_with("./") ? name.substr(2) : name);
    }
    EXPECT_EQ((std::set<std::string>{root + "/LICENSE", root + "/tavik"}), names);
}

}  // namespace
