// The example of the documentation, as a reader would run it.
#include "tests/support/ChildProcess.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <string>

namespace tavik::testing {
namespace {

const char* const OUTPUT =
    "Category: 0\n"
    "Code: 0\n"
    "Message: Completed successfully.\n"
    "\n"
    "<?xml version=\"1.0\" encoding=\"utf-8\"?><Object category=\"output\"><Object>"
    "<Property name=\"Model\" value=\"NORVO TX1 4B\"/>"
    "<Property name=\"Kelvin\" value=\"312\"/>"
    "<Property name=\"HighestKelvin\" value=\"338\"/>"
    "</Object></Object>\n"
    "\n"
    "ReadRegister at offset 2\n"
    "Input Payload (0 bytes)\n"
    "\n"
    "\n"
    "Output Payload (2 bytes)\n"
    "0000: 52 01  R.\n"
    "\n"
    "Status Code: 0\n"
    "Status Category: 0\n"
    "Status Message: Completed successfully.\n"
    "Duration: 00:00:00\n"
    "Command Path Name: Registers\n"
    "Command Path Timeout (seconds): 5\n";

TEST(Example, PrintsTheAnswerAndTheLastResult) {
    Program program;
    program.executable = EXAMPLE_PROGRAM;
    program.folder = ::testing::TempDir();
    const Ending ending = run(program);
    EXPECT_EQ(ending.out, OUTPUT);
    EXPECT_EQ(ending.err, "");
    EXPECT_EQ(ending.exitCode, 0);
}

TEST(Example, PrintsWhatItsPageSays) {
    std::ifstream file(EXAMPLE_PAGE);
    const std::string page((std::istreambuf_iterator<char>(file)), {});
    EXPECT_NE(page.find("```text\n" + std::string(OUTPUT) + "```\n"), std::string::npos);
}

}  // namespace
}  // namespace tavik::testing
