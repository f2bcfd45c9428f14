// The tool-kit's log: its streams, its threshold and the form of a line.
#include "core/GlobalLogging.h"

#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>
#include <thread>
#include <vector>

namespace orvel::core::global_logging {
namespace {

namespace severities = boost::log::trivial;

std::string contentsOf(const std::string& path) {
    std::ifstream file(path);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

/// Every line without the time in front of it.
std::string withoutTimes(const std::string& text) {
    std::string result;
    std::size_t begin = 0;
    while (begin < text.size()) {
        const std::size_t end = text.find('\n', begin);
        result += text.substr(text.find(' ', begin) + 1, end - text.find(' ', begin));
        begin = end + 1;
    }
    return result;
}

class GlobalLogging : public ::testing::Test {
protected:
    void SetUp() override {
        initialize();
        setFile("orvel.log", true);
    }

    void TearDown() override {
        initialize();
        setFile("orvel.log", true);
    }

    static std::string logged() { return withoutTimes(getString()->str()); }

    tavik::testing::TemporaryFolder folder;
};

TEST_F(GlobalLogging, StartsWithEverythingOffAndEverySeverity) {
    EXPECT_FALSE(isConsoleEnabled());
    EXPECT_FALSE(isFileEnabled());
    EXPECT_FALSE(isStringEnabled());
    EXPECT_EQ(getSeverity(), severities::trace);
    EXPECT_EQ(static_cast<int>(getSeverity()), 0);
    ASSERT_NE(getString(), nullptr);
    EXPECT_EQ(getString()->str(), "");
}

TEST_F(GlobalLogging, WritesNothingBeforeItIsEnabled) {
    enableString();
    writePlain(severities::fatal, "lost");
    EXPECT_EQ(logged(), "");
    enable();
    writePlain(severities::fatal, "kept");
    disable();
    writePlain(severities::fatal, "lost");
    EXPECT_EQ(logged(), "[fatal] kept\n");
}

TEST_F(GlobalLogging, NamesEachSeverity) {
    enableString();
    enable();
    for (const severity_level level : {severities::trace, severities::debug, severities::info,
                                       severities::warning, severities::error, severities::fatal}) {
        writePlain(level, "text");
    }
    EXPECT_EQ(logged(), "[trace] text\n"
                        "[debug] text\n"
                        "[info] text\n"
                        "[warning] text\n"
                        "[error] text\n"
                        "[fatal] text\n");
}

TEST_F(GlobalLogging, StartsALineWithTheTime) {
    enableString();
    enable();
    writePlain(severities::info, "text");
    const std::string line = getString()->str();
    // HH:MM:SS:ffffff [info] text
    ASSERT_EQ(line.size(), 28U) << line;
    std::string pattern = line;
    for (char& character : pattern) {
        if (character >= '0' && character <= '9') character = '9';
    }
    EXPECT_EQ(pattern, "99:99:99:999999 [info] text\n");
}

TEST_F(GlobalLogging, WritesTheLeafNameTheLineAndTheBareFunction) {
    enableString();
    enable();
    write(severities::debug, {"core/sub/File.cpp", 12, "space::Class::work"}, "text: more");
    write(severities::error, {"File.cpp", 0, "main"}, "");
    EXPECT_EQ(logged(), "[debug] File.cpp(12) work: text: more\n"
                        "[error] File.cpp(0) main: \n");
}

TEST_F(GlobalLogging, KnowsThePlaceItStandsIn) {
    const Place here = ORVEL_HERE;
    EXPECT_EQ(leafName(here.file), "GlobalLoggingTest.cpp");
    EXPECT_EQ(here.line, __LINE__ - 2);
    EXPECT_EQ(std::string(here.function), "TestBody");
}

TEST_F(GlobalLogging, CutsPathsAndQualifiers) {
    EXPECT_EQ(leafName("/a/b/c.cpp"), "c.cpp");
    EXPECT_EQ(leafName("c.cpp"), "c.cpp");
    EXPECT_EQ(leafName(""), "");
    EXPECT_EQ(bareName("a::b::c"), "c");
    EXPECT_EQ(bareName("c"), "c");
    EXPECT_EQ(bareName("c:"), "");
    EXPECT_EQ(bareName(""), "");
}

TEST_F(GlobalLogging, KeepsBytesAsTheyAre) {
    using namespace std::string_literals;
    enableString();
    enable();
    writePlain(severities::info, "a\0b \xC3\xA9\xFF %1% {}"s);
    EXPECT_EQ(logged(), "[info] a\0b \xC3\xA9\xFF %1% {}\n"s);
}

TEST_F(GlobalLogging, DropsWhatIsLessSevereThanTheThreshold) {
    enableString();
    enable();
    setSeverity(severities::error);
    EXPECT_EQ(static_cast<int>(getSeverity()), 4);
    writePlain(severities::debug, "dropped");
    writePlain(severities::warning, "dropped");
    writePlain(severities::error, "kept");
    writePlain(severities::fatal, "kept");
    EXPECT_EQ(logged(), "[error] kept\n"
                        "[fatal] kept\n");
    setSeverity(severities::trace);
    writePlain(severities::trace, "kept again");
    EXPECT_EQ(logged(), "[error] kept\n"
                        "[fatal] kept\n"
                        "[trace] kept again\n");
}

TEST_F(GlobalLogging, TellsWhetherARecordWouldBeWritten) {
    enableString();
    EXPECT_FALSE(isWritten(severities::fatal));
    enable();
    EXPECT_TRUE(isWritten(severities::trace));
    setSeverity(severities::info);
    EXPECT_FALSE(isWritten(severities::debug));
    EXPECT_TRUE(isWritten(severities::info));
    disableString();
    EXPECT_FALSE(isWritten(severities::fatal));
}

TEST_F(GlobalLogging, AttachesAndDetachesTheString) {
    enable();
    writePlain(severities::info, "lost");
    enableString();
    EXPECT_TRUE(isStringEnabled());
    writePlain(severities::info, "kept");
    disableString();
    EXPECT_FALSE(isStringEnabled());
    writePlain(severities::info, "lost");
    EXPECT_EQ(logged(), "[info] kept\n");
    enableString();
    clearString();
    writePlain(severities::info, "new");
    EXPECT_EQ(logged(), "[info] new\n");
}

TEST_F(GlobalLogging, TakesLinesAgainOnceTheStringWasReadToItsEndAndCleared) {
    enable();
    enableString();
    writePlain(severities::info, "read");
    std::string line;
    while (std::getline(*getString(), line))
        continue;
    ASSERT_TRUE(getString()->eof());
    clearString();
    writePlain(severities::info, "new");
    EXPECT_EQ(logged(), "[info] new\n");
}

TEST_F(GlobalLogging, WritesOneLinePerRecordThoughAttachedTwice) {
    enable();
    enableString();
    enableString();
    writePlain(severities::info, "once");
    EXPECT_EQ(logged(), "[info] once\n");
}

/// Takes what goes to the standard log stream.
class ConsoleCapture {
public:
    ConsoleCapture() : previous(std::clog.rdbuf(captured.rdbuf())) {}

    ConsoleCapture(const ConsoleCapture&) = delete;
    ConsoleCapture& operator=(const ConsoleCapture&) = delete;

    ~ConsoleCapture() { std::clog.rdbuf(previous); }

    std::string text() const { return withoutTimes(captured.str()); }

private:
    std::ostringstream captured;
    std::streambuf* previous;
};

TEST_F(GlobalLogging, ReachesConsoleAndStringWithOneRecord) {
    const ConsoleCapture console;
    enable();
    enableConsole();
    enableString();
    EXPECT_TRUE(isConsoleEnabled());
    writePlain(severities::info, "both");
    disableConsole();
    EXPECT_FALSE(isConsoleEnabled());
    writePlain(severities::info, "string only");
    EXPECT_EQ(console.text(), "[info] both\n");
    EXPECT_EQ(logged(), "[info] both\n"
                        "[info] string only\n");
}

TEST_F(GlobalLogging, LeavesTheFileAloneUntilItIsEnabled) {
    const std::string path = folder.path("a.log");
    enable();
    setFile(path, true);
    writePlain(severities::info, "lost");
    EXPECT_FALSE(isFileEnabled());
    EXPECT_FALSE(std::filesystem::exists(path));
    enableFile();
    EXPECT_TRUE(isFileEnabled());
    EXPECT_EQ(contentsOf(path), "");
}

TEST_F(GlobalLogging, FlushesEveryRecordToTheFile) {
    const std::string path = folder.path("a.log");
    setFile(path, true);
    enableFile();
    enable();
    writePlain(severities::info, "one");
    EXPECT_EQ(withoutTimes(contentsOf(path)), "[info] one\n");
    writePlain(severities::info, "two");
    EXPECT_EQ(withoutTimes(contentsOf(path)), "[info] one\n"
                                              "[info] two\n");
}

TEST_F(GlobalLogging, AppendsToAFileOrStartsItEmpty) {
    const std::string path = folder.path("a.log");
    std::ofstream(path) << "00 earlier\n";
    enable();
    setFile(path, true);
    enableFile();
    writePlain(severities::info, "appended");
    disableFile();
    EXPECT_EQ(withoutTimes(contentsOf(path)), "earlier\n"
                                              "[info] appended\n");
    setFile(path, false);
    enableFile();
    writePlain(severities::info, "alone");
    EXPECT_EQ(withoutTimes(contentsOf(path)), "[info] alone\n");
}

TEST_F(GlobalLogging, MovesAnOpenLogToAnotherFile) {
    enable();
    setFile(folder.path("a.log"), true);
    enableFile();
    writePlain(severities::info, "first");
    setFile(folder.path("b.log"), true);
    EXPECT_TRUE(isFileEnabled());
    writePlain(severities::info, "second");
    EXPECT_EQ(withoutTimes(contentsOf(folder.path("a.log"))), "[info] first\n");
    EXPECT_EQ(withoutTimes(contentsOf(folder.path("b.log"))), "[info] second\n");
}

TEST_F(GlobalLogging, ClosesAndReopensTheFile) {
    const std::string path = folder.path("a.log");
    disableFile();
    enable();
    setFile(path, true);
    enableFile();
    disableFile();
    disableFile();
    EXPECT_FALSE(isFileEnabled());
    writePlain(severities::info, "lost");
    enableFile();
    enableFile();
    writePlain(severities::info, "kept");
    EXPECT_EQ(withoutTimes(contentsOf(path)), "[info] kept\n");
}

TEST_F(GlobalLogging, OpensNoFileWithoutAName) {
    setFile("", true);
    enableFile();
    EXPECT_FALSE(isFileEnabled());
}

TEST_F(GlobalLogging, LosesTheFileWhenAnOpenLogGetsNoName) {
    const std::string path = folder.path("a.log");
    enable();
    setFile(path, true);
    enableFile();
    setFile("", true);
    EXPECT_FALSE(isFileEnabled());
    writePlain(severities::info, "lost");
    EXPECT_EQ(contentsOf(path), "");
}

TEST_F(GlobalLogging, LosesTheLinesOfAFileThatCannotBeOpened) {
    enable();
    enableString();
    setFile(folder.path("absent/a.log"), true);
    enableFile();
    EXPECT_TRUE(isFileEnabled());
    writePlain(severities::info, "text");
    EXPECT_EQ(logged(), "[info] text\n");
    EXPECT_FALSE(std::filesystem::exists(folder.path("absent")));
}

TEST_F(GlobalLogging, StartsAfreshWhenInitializedAgain) {
    const ConsoleCapture console;
    const std::string path = folder.path("a.log");
    setFile(path, true);
    enableFile();
    enableString();
    enableConsole();
    setSeverity(severities::fatal);
    enable();
    const auto earlier = getString();

    initialize();
    EXPECT_FALSE(isConsoleEnabled());
    EXPECT_FALSE(isFileEnabled());
    EXPECT_FALSE(isStringEnabled());
    EXPECT_EQ(getSeverity(), severities::trace);
    EXPECT_NE(getString(), earlier);
    enableString();
    writePlain(severities::fatal, "lost");
    enable();
    writePlain(severities::trace, "once");
    EXPECT_EQ(logged(), "[trace] once\n");
    EXPECT_EQ(earlier->str(), "");
    EXPECT_EQ(contentsOf(path), "");
    EXPECT_EQ(console.text(), "");
}

TEST_F(GlobalLogging, KeepsTheFileNameWhenInitializedAgain) {
    const std::string path = folder.path("a.log");
    setFile(path, true);
    initialize();
    enableFile();
    EXPECT_TRUE(std::filesystem::exists(path));
}

TEST_F(GlobalLogging, KeepsRecordsOfSeveralThreadsApart) {
    constexpr int THREADS = 4;
    constexpr int RECORDS = 100;
    enableString();
    enable();
    std::vector<std::thread> threads;
    for (int i = 0; i < THREADS; ++i) {
        threads.emplace_back([] {
            for (int record = 0; record < RECORDS; ++record) {
                writePlain(severities::info, "record");
            }
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    std::string expected;
    for (int i = 0; i < THREADS * RECORDS; ++i)
        expected += "[info] record\n";
    EXPECT_EQ(logged(), expected);
}

// What a process writes that has not initialized the log before.

/// Runs `scenario` of the program that stands beside this one, in `folder`, and returns all that
/// it wrote to its standard output and error.
std::string outputOfFreshProcess(const std::string& folder, const char* scenario) {
    const std::string program =
        std::filesystem::canonical("/proc/self/exe").replace_filename("fresh_log_process").string();
    const std::string output = folder + "/output";
    const pid_t child = ::fork();
    if (child == 0) {
        const int file = ::open(output.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
        if (file < 0 || ::chdir(folder.c_str()) != 0) ::_exit(126);
        ::dup2(file, STDOUT_FILENO);
        ::dup2(file, STDERR_FILENO);
        ::execl(program.c_str(), program.c_str(), scenario, nullptr);
        ::_exit(127);
    }
    int status = -1;
    ::waitpid(child, &status, 0);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << contentsOf(output);
    return contentsOf(output);
}

TEST_F(GlobalLogging, WritesNothingToEitherStreamBeforeInitialize) {
    EXPECT_EQ(outputOfFreshProcess(folder.path().string(), "before-initialize"), "");
    EXPECT_FALSE(std::filesystem::exists(folder.path("orvel.log")));
}

TEST_F(GlobalLogging, WritesNothingToEitherStreamBeforeEnable) {
    EXPECT_EQ(outputOfFreshProcess(folder.path().string(), "before-enable"), "");
}

TEST_F(GlobalLogging, WritesNothingToEitherStreamWithoutAStreamAttached) {
    EXPECT_EQ(outputOfFreshProcess(folder.path().string(), "without-stream"), "");
}

TEST_F(GlobalLogging, WritesToTheStandardLogStreamOnceAttached) {
    EXPECT_EQ(withoutTimes(outputOfFreshProcess(folder.path().string(), "console")),
              "[fatal] seen\n");
}

TEST_F(GlobalLogging, AppendsToOrvelLogInTheWorkingDirectoryByDefault) {
    EXPECT_EQ(outputOfFreshProcess(folder.path().string(), "default-file"), "");
    EXPECT_EQ(withoutTimes(contentsOf(folder.path("orvel.log"))), "[fatal] seen\n"
                                                                  "[fatal] again\n");
}

}  // namespace
}  // namespace orvel::core::global_logging
