// What is typed to the real tool with the real feature library and simulated drives, and what comes
// back: one test for each file below `cases`, and one for the page that has such a transcript.
//
// Each transcript starts in an empty folder with the default fleet, or with the fleet of a file of
// the same name with `.json` at its end. `tavik` and the library lie in `build/try/installed`, as
// they do for readers of the pages.
#include "tests/transcripts/Transcript.h"
#include "tests/support/SimulatedTool.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace {

namespace fs = std::filesystem;
using tavik::transcripts::Step;

std::string readFile(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) throw std::runtime_error("can't read " + path.string());
    return {std::istreambuf_iterator<char>(file), {}};
}

tavik::testing::SimulatedTool toolFor(const fs::path& transcript) {
    const fs::path fleet = fs::path(transcript).replace_extension(".json");
    return tavik::testing::SimulatedTool(
        {TRANSCRIPT_PROGRAM, TRANSCRIPT_LIBRARY, TRANSCRIPT_MODULES},
        fs::exists(fleet) ? fleet : fs::path());
}

/// A transcript can't tell whether the last line has its line feed.
std::string withLastLineEnd(const std::string& text) {
    return text.empty() || text.back() == '\n' ? text : text + "\n";
}

class TranscriptFile : public ::testing::Test {
public:
    explicit TranscriptFile(fs::path file) : file(std::move(file)) {}

    void TestBody() override {
        const std::string text = readFile(file);
        const bool isPage = file.extension() == ".md";
        const auto expected = tavik::transcripts::readTranscript(
            isPage ? tavik::transcripts::transcriptOfPage(text) : text);
        ASSERT_FALSE(expected.empty()) << "nothing is typed";
        const tavik::testing::SimulatedTool tool = toolFor(file);
        for (const Step& step : expected) {
            // Readers of a page have both streams on one terminal.
            const auto actual = tool.type(isPage ? step.command + " 2>&1" : step.command);
            SCOPED_TRACE("$ " + step.command);
            EXPECT_EQ(step.out, withLastLineEnd(actual.out)) << "standard output";
            EXPECT_EQ(step.err, withLastLineEnd(actual.err)) << "standard error";
            EXPECT_EQ(step.code, actual.exitCode) << "the exit code";
        }
    }

private:
    fs::path file;
};

/// Types what a file tells and writes down what comes back: the draft of a transcript, to be read
/// by somebody who knows what it must say.
int draft(const fs::path& file) {
    const tavik::testing::SimulatedTool tool = toolFor(file);
    std::vector<Step> steps;
    for (const Step& step : tavik::transcripts::readTranscript(readFile(file))) {
        const tavik::testing::Ending ending = tool.type(step.command);
        steps.push_back({step.command, ending.out, ending.err, ending.exitCode});
    }
    std::cout << tavik::transcripts::writeTranscript(steps);
    return 0;
}

std::vector<fs::path> findTranscripts() {
    std::vector<fs::path> files;
    for (const auto& entry : fs::recursive_directory_iterator(TRANSCRIPT_CASES)) {
        if (entry.path().extension() == ".txt") files.push_back(entry.path());
    }
    std::sort(files.begin(), files.end());
    return files;
}

void add(const std::string& name, const fs::path& file) {
    ::testing::RegisterTest(
        "Transcript", name.c_str(), nullptr, nullptr, __FILE__, __LINE__,
        [file]() -> ::testing::Test* { return std::make_unique<TranscriptFile>(file).release(); });
}

}  // namespace

int main(int argc, char** argv) {
    ::testing::InitGoogleTest(&argc, argv);
    if (argc == 3 && std::string(argv[1]) == "--draft") return draft(argv[2]);
    for (const fs::path& file : findTranscripts())
        add(fs::relative(file, TRANSCRIPT_CASES).replace_extension().string(), file);
    add("README", TRANSCRIPT_README);
    const int result = RUN_ALL_TESTS();
    if (::testing::UnitTest::GetInstance()->test_to_run_count() > 0) return result;
    std::cerr << "no transcript was tried\n";
    return 1;
}
