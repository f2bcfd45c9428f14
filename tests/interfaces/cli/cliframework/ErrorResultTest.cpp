// A failure as a result, in each format.
#include "interfaces/cli/cliframework/ErrorResult.h"

#include "tests/interfaces/cli/cliframework/CapturedLog.h"

#include <gtest/gtest.h>

namespace cli::framework {
namespace {

using testing::CapturedLog;
using Messages = std::vector<std::string>;

TEST(ErrorResult, MadeFromADetailHasCodeOneAndNoMessage) {
    const ErrorResult result("drive1");
    EXPECT_EQ(1, result.getErrorCode());
    EXPECT_EQ("drive1: Error: ", result.outputText());
}

TEST(ErrorResult, WritesTheErrorWordAheadOfTheMessage) {
    const ErrorResult result(1, "Failed to find valid library: x", "");
    EXPECT_EQ(1, result.getErrorCode());
    EXPECT_EQ("Error: Failed to find valid library: x", result.outputText());
}

TEST(ErrorResult, RendersInEachFormat) {
    const ErrorResult result(6, "Bad \"value\" <x> & y\nz", "");
    EXPECT_EQ("Error: Bad \"value\" <x> & y\nz", result.outputText());
    EXPECT_EQ("<Error Type=\"6\">Error: Bad \"value\" <x> & y\nz</Error>\n", result.outputXml());
    EXPECT_EQ("ERROR: Error: Bad \"value\" <x> & y\nz", result.outputEsxXml());
    EXPECT_EQ("Error: Bad \"value\" <x> & y\nz", result.outputTextTable());
    EXPECT_EQ("{\n"
              "\t\"Error_Type\":6,\n"
              "\t\"Error_Description\":\"Error: Bad \"value\" <x> & y\nz\"\n"
              "}\n",
              result.outputJson());
    EXPECT_EQ("Error_Type,6,\n"
              "Error_Description,Error: Bad \"value\" <x> & y\nz,\n",
              result.outputCSV());
}

TEST(ErrorResult, PutsItsDetailFirstInEachFormat) {
    const ErrorResult result(3, "message", "drive1");
    EXPECT_EQ("drive1: Error: message", result.outputText());
    EXPECT_EQ("<Error Type=\"3\">drive1: Error: message</Error>\n", result.outputXml());
    EXPECT_EQ("ERROR: drive1: Error: message", result.outputEsxXml());
    EXPECT_EQ("{\n"
              "\t\"Error_Type\":3,\n"
              "\t\"Error_Description\":\"drive1: Error: message\"\n"
              "}\n",
              result.outputJson());
    EXPECT_EQ("Error_Type,3,\n"
              "Error_Description,drive1: Error: message,\n",
              result.outputCSV());
}

TEST(ErrorResult, ChoosesItsWordByTheCodeNotTheClass) {
    ErrorResult result(201, "message", "");
    EXPECT_EQ("Syntax Error", result.getErrorString());
    EXPECT_EQ("Syntax Error: message", result.outputText());
    result.setErrorCode(200);
    EXPECT_EQ("Error", result.getErrorString());
    EXPECT_EQ("Error: message", result.outputText());
    result.setErrorCode(-1);
    EXPECT_EQ("<Error Type=\"-1\">Error: message</Error>\n", result.outputXml());
}

TEST(ErrorResult, LogsWordAndMessageWithoutASeparatorOncePerOutput) {
    const CapturedLog log(2);
    const ErrorResult result(3, "message", "drive1");
    EXPECT_TRUE(log.entries.empty());
    for (const unsigned type : {0U, 1U, 2U, 3U, 4U, 5U}) {
        SCOPED_TRACE(type);
        ErrorResult copy = result;
        copy.setOutputType(static_cast<OutputType>(type));
        (void)copy.output();
        EXPECT_EQ(type + 1, log.entries.size());
        EXPECT_EQ("Errormessage\n", log.messages().back());
        EXPECT_EQ(2, log.entries.back().getLevel());
    }
}

TEST(ErrorResult, LogsTheWordThatItPrints) {
    const CapturedLog log(2);
    (void)ErrorResult(201, "message", "").outputText();
    EXPECT_EQ((Messages{"Syntax Errormessage\n"}), log.messages());
}

}  // namespace
}  // namespace cli::framework
