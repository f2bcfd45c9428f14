// The option that links the platform's host library.
#include "tests/packaging/ProgramFile.h"
#include "tests/support/ChildProcess.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using tavik::testing::dynamicEntries;
using tavik::testing::Ending;
using tavik::testing::neededLibraries;
using tavik::testing::Program;
using tavik::testing::TemporaryFolder;

TEST(HostLibrary, IsNeededByItsBareNameThoughNothingIsCalled) {
    EXPECT_TRUE(neededLibraries(TAVIK_PROGRAM_FOR_HOST).contains("libvmkmgmt.so"));
    EXPECT_TRUE(dynamicEntries(TAVIK_PROGRAM_FOR_HOST, "RPATH").empty());
    EXPECT_TRUE(dynamicEntries(TAVIK_PROGRAM_FOR_HOST, "RUNPATH").empty());
}

TEST(HostLibrary, LetsTheProgramStartWhereTheLibraryIsFound) {
    const TemporaryFolder folder;
    Program program;
    program.executable = "/usr/bin/env";
    program.arguments = {"LD_LIBRARY_PATH=" TAVIK_HOST_LIBRARY_FOLDER, TAVIK_PROGRAM_FOR_HOST,
                         "version"};
    program.folder = folder.path();
    const Ending ending = run(program);
    EXPECT_EQ(0, ending.exitCode);
    EXPECT_EQ("", ending.err);
    EXPECT_EQ("- Version Information -\n"
              "Name: Norvo(R) Tavik\n"
              "Version: 3.0.14\n"
              "Description: Interact and configure Norvo SSDs.\n"
              "\n"
              "\n",
              ending.out);
}

TEST(HostLibrary, KeepsTheProgramFromStartingWhereItIsMissing) {
    const TemporaryFolder folder;
    Program program;
    program.executable = TAVIK_PROGRAM_FOR_HOST;
    program.arguments = {"version"};
    program.folder = folder.path();
    const Ending ending = run(program);
    EXPECT_EQ(127, ending.exitCode);
    EXPECT_EQ("", ending.out);
    EXPECT_NE(std::string::npos, ending.err.find("libvmkmgmt.so"));
}

TEST(HostLibrary, IsNotNeededWithoutTheOption) {
    EXPECT_FALSE(neededLibraries(TAVIK_PROGRAM).contains("libvmkmgmt.so"));
}

}  // namespace
