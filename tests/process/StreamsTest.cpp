// The tool with standard streams that are closed, full or broken, and what it leaves behind.
#include "tests/process/ToolFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

namespace tavik::process {

namespace {

using testing::Ending;
using testing::Input;
using testing::Output;
using testing::Program;

const std::string FAILED_JOB =
    R"(<?xml version="1.0" encoding="utf-8"?><Object category="Job"><Object category="status">)"
    R"(<Property name="Category" value="10"/><Property name="Code" value="1"/>)"
    R"(<Property name="Message" value="Drive is busy."/></Object></Object>)";

const std::string VERSION_TEXT = "- Version Information -\n"
                                 "Name: Norvo(R) Tavik\n"
                                 "Version: 3.0.14\n"
                                 "Description: Interact and configure Norvo SSDs.\n"
                                 "\n"
                                 "\n";

struct Broken {
    Output output;
    const char* name;
};

const Broken BROKEN[] = {
    {Output::CLOSED, "closed"},
    {Output::FULL_DEVICE, "full"},
    {Output::BROKEN_PIPE, "broken pipe"},
};

TEST(StandardOutput, ThatTakesNothingLeavesTheExitCodeTheResults) {
    struct Row {
        std::vector<std::string> words;
        int code;
    };

    const Row rows[] = {
        {{"version"}, 0},
        {{"help"}, 0},
        {{"show", "-norvossd"}, 3},
        {{"show", "-norvossd", "12345"}, 8},
        {{"set", "-system", "EnableLog=maybe"}, 6},
        {{"bogus"}, 201},
    };
    for (const Broken& broken : BROKEN) {
        for (const Row& row : rows) {
            SCOPED_TRACE(std::string(broken.name) + ": " + row.words[0]);
            const ToolFolder folder;
            folder.write("standin/reply.xml", FAILED_JOB);
            Program program = folder.tool(row.words);
            program.out = broken.output;
            const Ending ending = testing::run(program);
            EXPECT_EQ(0, ending.signal);
            EXPECT_EQ(row.code, ending.exitCode);
            EXPECT_EQ("", ending.err);
        }
    }
}

TEST(StandardOutput, ThatTakesNothingDoesNotKeepACommandFromItsWork) {
    for (const Broken& broken : BROKEN) {
        SCOPED_TRACE(broken.name);
        const ToolFolder folder;
        folder.write("standin/reply.xml", answer(""));
        Program program = folder.tool({"load", "-force", "-norvossd", "0"});
        program.out = broken.output;
        const Ending ending = testing::run(program);
        EXPECT_EQ(0, ending.exitCode);
        EXPECT_EQ("Updating firmware...\n", ending.err);
        EXPECT_TRUE(folder.read("standin/request.xml").has_value());
    }
}

TEST(StandardError, ThatTakesNothingLeavesTheResultAsItIs) {
    for (const Broken& broken : BROKEN) {
        SCOPED_TRACE(broken.name);
        const ToolFolder folder;
        folder.write("standin/reply.xml", answer(""));
        Program program = folder.tool({"set", "-norvossd", "0", "TempThreshold=70"});
        program.err = broken.output;
        const Ending ending = testing::run(program);
        EXPECT_EQ(0, ending.signal);
        EXPECT_EQ(0, ending.exitCode);
        EXPECT_EQ("Set TempThreshold successful. Completed successfully.\n", ending.out);
    }
}

TEST(StandardError, ThatTakesNoQuestionStillLetsItBeAnswered) {
    for (const Broken& broken : BROKEN) {
        SCOPED_TRACE(broken.name);
        const ToolFolder folder;
        folder.write("standin/reply.xml", answer(""));
        Program program = folder.tool({"delete", "-norvossd", "0"});
        program.err = broken.output;
        program.input = {Input::Kind::BYTES, "y", 0};
        const Ending ending = testing::run(program);
        EXPECT_EQ(0, ending.exitCode);
        EXPECT_EQ("\nNo results\n\n", ending.out);
        EXPECT_TRUE(folder.read("standin/request.xml").has_value());
    }
}

TEST(StandardInput, ClosedAtAPromptCancels) {
    const ToolFolder folder;
    Program program = folder.tool({"delete", "-norvossd", "0"});
    program.input = {Input::Kind::CLOSED, "", 0};
    const Ending ending = testing::run(program);
    EXPECT_EQ(0, ending.exitCode);
    EXPECT_EQ("Cancelled\n", ending.out);
    EXPECT_EQ("WARNING! You have selected to delete all the data on the drive! \n"
              "Proceed with the delete? (Y|N): ",
              ending.err);
    EXPECT_EQ(std::nullopt, folder.read("standin/request.xml"));
}

TEST(StandardStreams, AllClosedHarmNoFile) {
    const ToolFolder folder;
    folder.write(CONFIG, "garbage");
    folder.write("standin/reply.xml", answer(""));
    Program program = folder.tool({"set", "-norvossd", "0", "TempThreshold=70"});
    program.input = {Input::Kind::CLOSED, "", 0};
    program.out = Output::CLOSED;
    program.err = Output::CLOSED;
    const Ending ending = testing::run(program);
    EXPECT_EQ(0, ending.signal);
    EXPECT_EQ(0, ending.exitCode);
    // No file got the number of a closed stream, and so none got a word meant for it.
    EXPECT_EQ(DEFAULT_CONFIG, folder.read(CONFIG));
    EXPECT_EQ("<?xml version=\"1.0\" encoding=\"utf-8\"?><Object name=\"NVMeFeatures\"",
              folder.read("standin/request.xml").value_or("").substr(0, 65));
}

TEST(StandardInput, KeepsAllBehindTheAnswerForTheNextReader) {
    struct Row {
        const char* given;
        const char* rest;
    };

    const Row rows[] = {
        {"yes\nnext line\n", "es\nnext line\n"},
        {"Y", ""},
        {"no\n", "o\n"},
        {"\nrest", "rest"},
        {"yy", "y"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.given);
        const ToolFolder folder;
        folder.write("standin/reply.xml", answer(""));
        Program program =
            folder.other("/bin/sh", {"-c", "./tavik delete -norvossd 0 >result; cat"});
        program.input = {Input::Kind::BYTES, row.given, 0};
        EXPECT_EQ(row.rest, testing::run(program).out) << "from a pipe";
        folder.write("given", row.given);
        program.arguments[1] = "{ ./tavik delete -norvossd 0 >result; cat; } <given";
        EXPECT_EQ(row.rest, testing::run(program).out) << "from a file";
    }
}

TEST(StandardInput, IsNotReadWithoutAQuestion) {
    for (const char* line : {"version", "show -norvossd", "load -force -norvossd 0",
                             "set -norvossd 0 TempThreshold=70", "bogus", "help"}) {
        SCOPED_TRACE(line);
        const ToolFolder folder;
        folder.write("standin/reply.xml", answer(""));
        Program program =
            folder.other("/bin/sh", {"-c", "./tavik " + std::string(line) + " >result 2>&1; cat"});
        program.input = {Input::Kind::BYTES, "yes\n", 0};
        EXPECT_EQ("yes\n", testing::run(program).out);
    }
}

TEST(Run, IsTheSameInAnyEnvironment) {
    const ToolFolder folder;
    const Ending plain = folder.run({"help"});
    ASSERT_EQ(0, plain.exitCode);
    const Program odd = folder.other(
        "/usr/bin/env",
        {"-i", "HOME=/nowhere", "LANG=tr_TR.UTF-8", "LC_ALL=de_DE.UTF-8", "LC_NUMERIC=de_DE",
         "TERM=dumb", "COLUMNS=20", "LINES=5", "TZ=Nowhere/Else", "TMPDIR=/nowhere",
         "XDG_CONFIG_HOME=/nowhere", "TAVIK_CONFIG=/nowhere", "./tavik", "help"});
    const Ending same = testing::run(odd);
    EXPECT_EQ(plain.exitCode, same.exitCode);
    EXPECT_EQ(plain.out, same.out);
    EXPECT_EQ(plain.err, same.err);

    Program none = folder.other("/usr/bin/env", {"-i", "./tavik", "version"});
    EXPECT_EQ(VERSION_TEXT, testing::run(none).out);
}

TEST(Run, HasUnloadedTheLibraryAndClosedItsFilesBeforeTheFirstByteOfTheResult) {
    const ToolFolder folder;
    folder.write("standin/reply.xml",
                 answer(R"(<Object category="output"><Property name="Long" value=")" +
                        std::string(5'000'000, 'x') + R"("/></Object>)"));
    // The pipe takes a part of the result only, so the tool is still there behind the first line.
    const std::string script =
        "sh -c 'echo $$ >pid; exec ./tavik show -norvossd' |"
        " { IFS= read -r line; tail -n 1 standin/calls >last-call; process=/proc/$(cat pid);"
        " readlink $process/exe >executable; ls -l $process/fd >descriptors; cat >rest; }";
    const Ending ending = testing::run(folder.other("/bin/sh", {"-c", script}));
    ASSERT_EQ(0, ending.exitCode) << ending.err;
    EXPECT_EQ("Unload()\n", folder.read("last-call"));
    EXPECT_EQ(std::filesystem::canonical(folder.path("tavik")).string() + "\n",
              folder.read("executable"));
    const std::string descriptors = folder.read("descriptors").value_or("");
    EXPECT_NE(std::string::npos, descriptors.find("1 -> pipe:")) << descriptors;
    EXPECT_EQ(std::string::npos, descriptors.find(std::filesystem::canonical(folder.path(""))))
        << descriptors;
    const std::string printed = "Long : " + std::string(5'000'000, 'x') + "\n\n";
    EXPECT_TRUE(printed == folder.read("rest").value_or(""));
}

}  // namespace

}  // namespace tavik::process
