// That the runner notices each kind of difference, with shell scripts in the tool's place.
#include "tests/golden/GoldenRun.h"

#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using tavik::golden::GoldenCase;
using tavik::testing::TemporaryFolder;

/// A case that `script` meets if it writes nothing.
GoldenCase emptyCase() {
    GoldenCase golden;
    golden.words = {"verb", "word"};
    golden.config = golden.configAfter = "config";
    return golden;
}

/// What the runner says about the case with `script` in the tool's place.
std::vector<std::string> failuresOf(const GoldenCase& golden, const std::string& script) {
    const TemporaryFolder folder;
    std::ofstream(folder.path("program")) << "#!/bin/sh\n" << script;
    std::filesystem::permissions(folder.path("program"), std::filesystem::perms::owner_all);
    ::testing::TestPartResultArray results;
    {
        const ::testing::ScopedFakeTestPartResultReporter reporter(
            ::testing::ScopedFakeTestPartResultReporter::INTERCEPT_ONLY_CURRENT_THREAD, &results);
        tavik::golden::expectOutcome(golden, {folder.path("program"), GOLDEN_LIBRARIES});
    }
    std::vector<std::string> messages;
    for (int index = 0; index < results.size(); ++index)
        messages.emplace_back(results.GetTestPartResult(index).message());
    return messages;
}

void expectFailure(const std::string& part, const std::vector<std::string>& failures) {
    ASSERT_EQ(1U, failures.size());
    EXPECT_NE(std::string::npos, failures[0].find(part)) << failures[0];
}

TEST(GoldenRun, IsContentWithWhatTheCaseSays) {
    EXPECT_TRUE(failuresOf(emptyCase(), "").empty());
    GoldenCase golden = emptyCase();
    golden.out = "verb word tty\n";
    golden.err = "e";
    golden.code = 9;
    golden.input = "typed\n";
    golden.calls = "Load(1)\nat {folder}\n";
    golden.requests = {{"request.xml", "<a/>"}};
    golden.orders = {{"reply.xml", "<b/>"}};
    golden.configAfter = "changed";
    golden.files = {{"a.bin", "<b/>"}};
    const std::string script = R"sh(read word
[ "$word" = typed ] && echo "$@ tty"
printf e >&2
printf changed > opt/tavik_config.xml
cp standin/reply.xml a.bin
printf '<a/>' > standin/request.xml
printf 'Load(1)\nat %s\n' "$(pwd -P)" > standin/calls
exit 9
)sh";
    EXPECT_TRUE(failuresOf(golden, script).empty());
}

TEST(GoldenRun, NoticesEachDifference) {
    expectFailure("the exit code", failuresOf(emptyCase(), "exit 1"));
    expectFailure("standard output", failuresOf(emptyCase(), "echo"));
    expectFailure("standard error", failuresOf(emptyCase(), "echo >&2"));
    expectFailure("the configuration", failuresOf(emptyCase(), "echo > opt/tavik_config.xml"));
    expectFailure("that there is a configuration",
                  failuresOf(emptyCase(), "rm opt/tavik_config.xml"));
    expectFailure("the file 'new' was not expected", failuresOf(emptyCase(), "echo > new"));
    expectFailure("the file 'opt/new' was not expected", failuresOf(emptyCase(), "echo > opt/new"));
    EXPECT_EQ(2U, failuresOf(emptyCase(), "kill -KILL $$").size());
}

TEST(GoldenRun, NoticesWhatIsMissing) {
    GoldenCase golden = emptyCase();
    golden.files = {{"a.bin", "bytes"}};
    expectFailure("the file 'a.bin' was not written", failuresOf(golden, ""));
    expectFailure("in the file a.bin", failuresOf(golden, "printf Bytes > a.bin"));
    golden = emptyCase();
    golden.requests = {{"request.xml", "<a/>"}};
    expectFailure("request.xml", failuresOf(golden, ""));
    golden = emptyCase();
    golden.calls = "Load(1)\n";
    expectFailure("the library's calls", failuresOf(golden, ""));
}

TEST(GoldenRun, RunsOnceMoreForEachFormatWithTheOptionBehindTheVerb) {
    GoldenCase golden = emptyCase();
    golden.out = "verb word\n";
    golden.outByFormat = {{"esx", "verb -output esx word\n"}, {"json", "verb -output json word\n"}};
    EXPECT_TRUE(failuresOf(golden, "echo $@").empty());
    golden.outByFormat["json"] = "other";
    expectFailure("standard output", failuresOf(golden, "echo $@"));
}

TEST(GoldenRun, PutsTheLibraryInItsPlaces) {
    GoldenCase golden = emptyCase();
    golden.variants = {{"exe", "broken"}, {"opt", "full"}};
    const std::string script = R"sh(name=libNorvo.SSDFeatures.so.2.0.0
grep -q 'This is no library' $name || exit 1
grep -q ReceiveXMLMessage opt/$name || exit 2
)sh";
    EXPECT_TRUE(failuresOf(golden, script).empty());
    golden.variants = {{"opt", "unheard-of"}};
    EXPECT_THROW(failuresOf(golden, ""), std::runtime_error);
}

TEST(GoldenRun, GivesATerminalOfTheWidthAskedFor) {
    GoldenCase golden = emptyCase();
    golden.columns = 43;
    golden.out = "24 43\n";
    EXPECT_TRUE(failuresOf(golden, "stty size").empty());
}

TEST(GoldenRun, ClosesStandardInput) {
    GoldenCase golden = emptyCase();
    golden.isInputClosed = true;
    golden.out = "closed\n";
    EXPECT_TRUE(failuresOf(golden, "[ -e /proc/self/fd/0 ] || echo closed").empty());
}

}  // namespace
