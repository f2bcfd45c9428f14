// The refusal of a command line, with the list of commands that almost matched.
#include "interfaces/cli/cliframework/SyntaxErrorResult.h"

#include "tests/interfaces/cli/cliframework/CapturedLog.h"

#include <gtest/gtest.h>

namespace cli::framework {
namespace {

std::vector<CommandSpec> twoCommands() {
    CommandSpec set(1, "EnableLog", "set", "");
    set.addTarget("-system", true, "", false, "");
    set.addProperty("EnableLog", true, "'true'|'false'", true, "");
    return {set, CommandSpec(0, "Version", "version", "")};
}

TEST(SyntaxErrorResult, HasCode201AndNoMessageByDefault) {
    const SyntaxErrorResult result;
    EXPECT_EQ(201, result.getErrorCode());
    EXPECT_EQ("Syntax Error", result.getErrorString());
    EXPECT_EQ("Syntax Error: ", result.outputText());
}

TEST(SyntaxErrorResult, RendersInEachFormat) {
    const SyntaxErrorResult result("Options 'all' and 'display' cannot be used together.");
    EXPECT_EQ(201, result.getErrorCode());
    EXPECT_EQ("Syntax Error: Options 'all' and 'display' cannot be used together.",
              result.outputText());
    EXPECT_EQ("<Error Type=\"201\">Syntax Error: Options 'all' and 'display' cannot be used "
              "together.</Error>\n",
              result.outputXml());
    EXPECT_EQ("ERROR: Syntax Error: Options 'all' and 'display' cannot be used together.",
              result.outputEsxXml());
    EXPECT_EQ("Syntax Error: Options 'all' and 'display' cannot be used together.",
              result.outputTextTable());
    EXPECT_EQ("{\n"
              "\t\"Error_Type\":201,\n"
              "\t\"Error_Description\":\"Syntax Error: Options 'all' and 'display' cannot be used "
              "together.\"\n"
              "}\n",
              result.outputJson());
    EXPECT_EQ("Error_Type,201,\n"
              "Error_Description,Syntax Error: Options 'all' and 'display' cannot be used "
              "together.,\n",
              result.outputCSV());
}

TEST(SyntaxErrorResult, ListsPotentialCommandsInTextTableAndEsxOnly) {
    SyntaxErrorResult result("Invalid command.");
    result.setPotentialCommands(twoCommands());
    const std::string withList = "Syntax Error: Invalid command.\n"
                                 "Did you mean: \n"
                                 "set -system EnableLog = ('true'|'false')\n"
                                 "version\n";
    EXPECT_EQ(withList, result.outputText());
    EXPECT_EQ(withList, result.outputTextTable());
    EXPECT_EQ("ERROR: " + withList, result.outputEsxXml());
    EXPECT_EQ("<Error Type=\"201\">Syntax Error: Invalid command.</Error>\n", result.outputXml());
    EXPECT_EQ("{\n"
              "\t\"Error_Type\":201,\n"
              "\t\"Error_Description\":\"Syntax Error: Invalid command.\"\n"
              "}\n",
              result.outputJson());
    EXPECT_EQ("Error_Type,201,\n"
              "Error_Description,Syntax Error: Invalid command.,\n",
              result.outputCSV());
}

TEST(SyntaxErrorResult, ReplacesItsPotentialCommands) {
    SyntaxErrorResult result("Invalid command.");
    result.setPotentialCommands(twoCommands());
    result.setPotentialCommands({CommandSpec(0, "Help", "help", "")});
    EXPECT_EQ("Syntax Error: Invalid command.\n"
              "Did you mean: \n"
              "help\n",
              result.outputText());
    result.setPotentialCommands({});
    EXPECT_EQ("Syntax Error: Invalid command.", result.outputText());
}

TEST(SyntaxErrorResult, ReadsErrorInEachFormatOnceItsCodeIsAnother) {
    SyntaxErrorResult result("message");
    result.setErrorCode(8);
    EXPECT_EQ("Error: message", result.outputText());
    EXPECT_EQ("<Error Type=\"8\">Error: message</Error>\n", result.outputXml());
    EXPECT_EQ("ERROR: Error: message", result.outputEsxXml());
    EXPECT_EQ("{\n"
              "\t\"Error_Type\":8,\n"
              "\t\"Error_Description\":\"Error: message\"\n"
              "}\n",
              result.outputJson());
    EXPECT_EQ("Error_Type,8,\n"
              "Error_Description,Error: message,\n",
              result.outputCSV());
}

TEST(SyntaxErrorResult, LogsOncePerOutputWithoutTheList) {
    const testing::CapturedLog log(2);
    SyntaxErrorResult result("message");
    result.setPotentialCommands(twoCommands());
    (void)result.outputText();
    (void)result.outputEsxXml();
    EXPECT_EQ((std::vector<std::string>{"Syntax Errormessage\n", "Syntax Errormessage\n"}),
              log.messages());
}

}  // namespace
}  // namespace cli::framework
