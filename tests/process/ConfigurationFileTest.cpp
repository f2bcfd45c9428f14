// What becomes of the configuration file where rights, kinds of file, sizes, kills or other
// processes stand in the way.
#include "tests/process/ToolFolder.h"

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <set>
#include <string>
#include <vector>

namespace tavik::process {

namespace {

namespace fs = std::filesystem;
using testing::Ending;
using Place = ToolFolder::Place;

const std::string VERSION_TEXT = "- Version Information -\n"
                                 "Name: Norvo(R) Tavik\n"
                                 "Version: 3.0.14\n"
                                 "Description: Interact and configure Norvo SSDs.\n"
                                 "\n"
                                 "\n";

const std::string DEFAULTS_TEXT = "- TAVIK Config -\n"
                                  "EnableLog: false\n"
                                  "EnableLSIAdapter: false\n"
                                  "LogFile: /var/log/ORVELI.log\n"
                                  "\n"
                                  "\n";

const std::string LOGGING_CONFIG =
    R"(<?xml version="1.0" encoding="utf-8"?>)"
    R"(<Object category="attributeList" name="TAVIK Config">)"
    R"(<Property category="attribute" displayName="Enable Log" name="EnableLog" size="5")"
    R"( type="string" value="true"/>)"
    R"(<Property category="attribute" displayName="Enable LSI Adapter" name="EnableLSIAdapter")"
    R"( size="6" type="string" value="false"/>)"
    R"(<Property category="attribute" displayName="Log File" name="LogFile" size="20")"
    R"( type="string" value="/var/log/ORVELI.log"/>)"
    R"(</Object>)";

const std::string BAD_FILE =
    "Error: Invalid or corrupted configuration file: opt/tavik_config.xml\n";
const std::string NOT_WRITTEN =
    "Error: Failed to write TAVIK configuration file. opt/tavik_config.xml\n";

/// A valid configuration of that many levels of elements.
std::string nestedConfig(int levels) {
    const std::string closing = "</Object>";
    std::string config = LOGGING_CONFIG.substr(0, LOGGING_CONFIG.size() - closing.size());
    for (int level = 1; level < levels; ++level)
        config += "<Object>";
    for (int level = 1; level < levels; ++level)
        config += closing;
    return config + closing;
}

void setMode(const std::string& path, mode_t mode) {
    ASSERT_EQ(0, ::chmod(path.c_str(), mode)) << path;
}

/// The tool run by a user without rights over the files of others.
Ending runWithoutRights(const ToolFolder& folder, std::vector<std::string> words) {
    setMode(folder.path(""), 0755);
    if (::geteuid() != 0) return folder.run(words);
    words.insert(words.begin(), {"--reuid=65534", "--regid=65534", "--clear-groups", "./tavik"});
    return testing::run(folder.other("/usr/bin/setpriv", words));
}

void expectEnding(const Ending& ending, int code, const std::string& out) {
    EXPECT_EQ(0, ending.signal);
    EXPECT_EQ(code, ending.exitCode);
    EXPECT_EQ(out, ending.out);
    EXPECT_EQ("", ending.err);
}

TEST(ConfigurationFile, IsWrittenOverInAFolderThatTakesNoNewFile) {
    const ToolFolder folder;
    folder.write(CONFIG, "garbage, longer than nothing" + std::string(2000, '.'));
    folder.write("standin/reply.xml", answer(""));
    setMode(folder.path(CONFIG), 0666);
    setMode(folder.path("opt"), 0555);
    struct stat before = {};
    ASSERT_EQ(0, ::stat(folder.path(CONFIG).c_str(), &before));

    expectEnding(runWithoutRights(folder, {"version"}), 0, VERSION_TEXT);
    EXPECT_EQ(DEFAULT_CONFIG, folder.read(CONFIG));
    expectEnding(runWithoutRights(folder, {"set", "-system", "EnableLog=true"}), 0,
                 "Set EnableLog successful.\n");
    EXPECT_EQ(LOGGING_CONFIG, folder.read(CONFIG));

    struct stat after = {};
    ASSERT_EQ(0, ::stat(folder.path(CONFIG).c_str(), &after));
    EXPECT_EQ(before.st_ino, after.st_ino);
    EXPECT_EQ(before.st_mode, after.st_mode);
    setMode(folder.path("opt"), 0755);
}

TEST(ConfigurationFile, StaysAsItIsWhereNothingCanBeWritten) {
    const ToolFolder folder;
    folder.write(CONFIG, "garbage");
    folder.write("standin/reply.xml", answer(""));
    setMode(folder.path(CONFIG), 0444);
    setMode(folder.path("opt"), 0555);

    expectEnding(runWithoutRights(folder, {"version"}), 0, VERSION_TEXT);
    expectEnding(runWithoutRights(folder, {"show", "-all", "-system"}), 0, DEFAULTS_TEXT);
    expectEnding(runWithoutRights(folder, {"set", "-system", "EnableLog=true"}), 5, NOT_WRITTEN);
    expectEnding(runWithoutRights(folder, {"show", "-norvossd"}), 4, BAD_FILE);
    EXPECT_EQ("garbage", folder.read(CONFIG));
    setMode(folder.path("opt"), 0755);
}

TEST(ConfigurationFile, ThatIsProtectedStaysThoughItsFolderTakesNewFiles) {
    const ToolFolder folder;
    folder.write(CONFIG, "garbage");
    setMode(folder.path(CONFIG), 0444);
    setMode(folder.path("opt"), 0777);
    const std::set<std::string> before = folder.installed();
    expectEnding(runWithoutRights(folder, {"show", "-all", "-system"}), 0, DEFAULTS_TEXT);
    expectEnding(runWithoutRights(folder, {"set", "-system", "EnableLog=true"}), 5, NOT_WRITTEN);
    EXPECT_EQ("garbage", folder.read(CONFIG));
    EXPECT_EQ(before, folder.installed());
}

TEST(ConfigurationFile, WithABadSettingThatCannotBeRepairedStillTellsThatTheLogIsOff) {
    const ToolFolder folder;
    const std::string bad =
        R"(<Object name="TAVIK Config"><Property name="EnableLog" type="string")"
        R"( value="maybe"/></Object>)";
    folder.write(CONFIG, bad);
    folder.write("standin/reply.xml", answer(""));
    setMode(folder.path(CONFIG), 0444);
    setMode(folder.path("opt"), 0555);
    expectEnding(runWithoutRights(folder, {"show", "-norvossd"}), 0, "\nNo results\n\n");
    EXPECT_EQ(bad, folder.read(CONFIG));
    setMode(folder.path("opt"), 0755);
}

TEST(ConfigurationFile, ThatCannotBeReadCountsAsEmpty) {
    const ToolFolder folder;
    folder.write(CONFIG, LOGGING_CONFIG);
    folder.write("standin/reply.xml", answer(""));
    setMode(folder.path(CONFIG), 0000);
    setMode(folder.path("opt"), 0555);

    expectEnding(runWithoutRights(folder, {"show", "-all", "-system"}), 0, DEFAULTS_TEXT);
    expectEnding(runWithoutRights(folder, {"set", "-system", "EnableLog=true"}), 5, NOT_WRITTEN);
    expectEnding(runWithoutRights(folder, {"show", "-norvossd"}), 4, BAD_FILE);
    setMode(folder.path(CONFIG), 0644);
    EXPECT_EQ(LOGGING_CONFIG, folder.read(CONFIG));
    setMode(folder.path("opt"), 0755);
}

TEST(ConfigurationFile, InAFolderThatCannotBeEnteredCountsAsAbsent) {
    const ToolFolder folder(Place::BESIDE_THE_TOOL);
    folder.write("standin/reply.xml", answer(""));
    setMode(folder.path("opt"), 0000);
    expectEnding(runWithoutRights(folder, {"version"}), 0, VERSION_TEXT);
    expectEnding(runWithoutRights(folder, {"set", "-system", "LogFile=/x"}), 5, NOT_WRITTEN);
    expectEnding(runWithoutRights(folder, {"show", "-norvossd"}), 4, BAD_FILE);
    setMode(folder.path("opt"), 0755);
    EXPECT_EQ(DEFAULT_CONFIG, folder.read(CONFIG));
}

TEST(ConfigurationFile, IsNotMadeWithoutItsFolder) {
    const ToolFolder folder(Place::BESIDE_THE_TOOL);
    folder.write("standin/reply.xml", answer(""));
    fs::remove_all(folder.path("opt"));
    expectEnding(folder.run({"version"}), 0, VERSION_TEXT);
    expectEnding(folder.run({"show", "-all", "-system"}), 0, DEFAULTS_TEXT);
    expectEnding(folder.run({"set", "-system", "EnableLog=true"}), 5, NOT_WRITTEN);
    expectEnding(folder.run({"show", "-norvossd"}), 4, BAD_FILE);
    EXPECT_FALSE(fs::exists(folder.path("opt")));
}

TEST(ConfigurationFile, IsNotMadeBelowAPlainFile) {
    const ToolFolder folder(Place::BESIDE_THE_TOOL);
    folder.write("standin/reply.xml", answer(""));
    fs::remove_all(folder.path("opt"));
    folder.write("opt", "no folder");
    expectEnding(folder.run({"version"}), 0, VERSION_TEXT);
    expectEnding(folder.run({"set", "-system", "EnableLog=true"}), 5, NOT_WRITTEN);
    expectEnding(folder.run({"show", "-norvossd"}), 4, BAD_FILE);
    EXPECT_EQ("no folder", folder.read("opt"));
}

TEST(ConfigurationFile, KeepsItsModeWhenItIsRepaired) {
    for (const mode_t mode : {0600, 0640, 0666}) {
        SCOPED_TRACE(mode);
        const ToolFolder folder(Place::NOWHERE);
        folder.write(CONFIG, "garbage");
        setMode(folder.path(CONFIG), mode);
        expectEnding(folder.run({"version"}), 0, VERSION_TEXT);
        EXPECT_EQ(DEFAULT_CONFIG, folder.read(CONFIG));
        struct stat after = {};
        ASSERT_EQ(0, ::stat(folder.path(CONFIG).c_str(), &after));
        EXPECT_EQ(mode, after.st_mode & 07777U);
        EXPECT_EQ(std::set<std::string>{"tavik_config.xml"}, folder.installed());
    }
}

TEST(ConfigurationFile, BehindALinkIsRepairedThere) {
    const ToolFolder folder(Place::NOWHERE);
    folder.write("elsewhere.xml", "garbage");
    fs::remove(folder.path(CONFIG));
    fs::create_symlink(folder.path("elsewhere.xml"), folder.path(CONFIG));
    expectEnding(folder.run({"version"}), 0, VERSION_TEXT);
    EXPECT_TRUE(fs::is_symlink(folder.path(CONFIG)));
    EXPECT_EQ(DEFAULT_CONFIG, folder.read("elsewhere.xml"));
}

TEST(ConfigurationFile, ThatIsAPipeBlocksNoRun) {
    const ToolFolder folder(Place::NOWHERE);
    fs::remove(folder.path(CONFIG));
    ASSERT_EQ(0, ::mkfifo(folder.path(CONFIG).c_str(), 0600));
    expectEnding(folder.run({"version"}), 0, VERSION_TEXT);
    expectEnding(folder.run({"show", "-all", "-system"}), 0, DEFAULTS_TEXT);
    EXPECT_TRUE(fs::is_fifo(folder.path(CONFIG)));
}

TEST(ConfigurationFile, OfManyMegabytesIsReplaced) {
    for (const std::string& bytes : {std::string(8'000'000, 'x'), std::string(8'000'000, '\0'),
                                     "<!--" + std::string(8'000'000, '-')}) {
        const ToolFolder folder(Place::NOWHERE);
        folder.write(CONFIG, bytes);
        expectEnding(folder.run({"show", "-all", "-system"}), 0, DEFAULTS_TEXT);
        EXPECT_EQ(DEFAULT_CONFIG, folder.read(CONFIG));
    }
}

TEST(ConfigurationFile, MayBeNestedToTheLimitAndIsReplacedBeyond) {
    struct Row {
        int levels;
        bool isKept;
    };

    for (const Row& row :
         {Row{2048, true}, Row{2049, false}, Row{3000, false}, Row{50'000, false}}) {
        SCOPED_TRACE(row.levels);
        const std::string config = nestedConfig(row.levels);
        const ToolFolder folder(Place::NOWHERE);
        folder.write(CONFIG, config);
        expectEnding(folder.run({"version"}), 0, VERSION_TEXT);
        EXPECT_TRUE((row.isKept ? config : DEFAULT_CONFIG) == folder.read(CONFIG));
    }
}

TEST(ConfigurationFile, IsTheOldOrTheNewOneWhereverTheRunIsKilled) {
    const std::string old(300, 'g');
    const ToolFolder folder(Place::NOWHERE);
    for (int tick = 1; tick <= 40; ++tick) {
        folder.write(CONFIG, old);
        const std::string seconds = "0." + std::string(tick < 20 ? "00" : "0") +
                                    std::to_string(tick < 20 ? tick * 5 : tick);
        testing::run(
            folder.other("/usr/bin/timeout", {"--signal=KILL", seconds, "./tavik", "version"}));
        const auto left = folder.read(CONFIG);
        ASSERT_TRUE(left == old || left == DEFAULT_CONFIG) << "after " << seconds << " s";
    }
    // What a killed run left beside the file is in nobody's way.
    folder.write(CONFIG, old);
    expectEnding(folder.run({"version"}), 0, VERSION_TEXT);
    EXPECT_EQ(DEFAULT_CONFIG, folder.read(CONFIG));
}

TEST(ConfigurationFile, IsWholeWhenManyProcessesRepairItAtOnce) {
    for (int round = 0; round < 5; ++round) {
        const ToolFolder folder(Place::NOWHERE);
        folder.write(CONFIG, "garbage");
        const Ending ending = testing::run(folder.other(
            "/bin/sh", {"-c", "for i in 1 2 3 4 5 6 7 8; do ./tavik version >out$i & done; wait"}));
        EXPECT_EQ(0, ending.exitCode);
        EXPECT_EQ("", ending.err);
        for (int i = 1; i <= 8; ++i)
            EXPECT_EQ(VERSION_TEXT, folder.read("out" + std::to_string(i)));
        EXPECT_EQ(DEFAULT_CONFIG, folder.read(CONFIG));
        EXPECT_EQ(std::set<std::string>{"tavik_config.xml"}, folder.installed());
    }
}

TEST(ConfigurationFile, IsOneOfTheTwoWhenTwoSettingsMeet) {
    for (int round = 0; round < 5; ++round) {
        const ToolFolder folder(Place::NOWHERE);
        const Ending ending = testing::run(
            folder.other("/bin/sh", {"-c", "./tavik set -system EnableLog=true & "
                                           "./tavik set -system EnableLog=false & wait"}));
        EXPECT_EQ(0, ending.exitCode);
        EXPECT_EQ("Set EnableLog successful.\nSet EnableLog successful.\n", ending.out);
        const auto left = folder.read(CONFIG);
        EXPECT_TRUE(left == LOGGING_CONFIG || left == DEFAULT_CONFIG);
    }
}

}  // namespace

}  // namespace tavik::process
