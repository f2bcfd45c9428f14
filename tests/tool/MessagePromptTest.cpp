// The question to the operator: what is written, what is read, and what the answer means.
#include "tool/MessagePrompt.h"

#include <gtest/gtest.h>

#include <iostream>
#include <sstream>

namespace tavik::prompt {
namespace {

/// Feeds standard input and catches both output streams while it lives.
class Terminal {
public:
    explicit Terminal(const std::string& typed)
        : input(typed),
          savedIn(std::cin.rdbuf(input.rdbuf())),
          savedLog(std::clog.rdbuf(log.rdbuf())),
          savedOut(std::cout.rdbuf(output.rdbuf())) {
        std::cin.clear();
    }

    Terminal(const Terminal&) = delete;
    Terminal& operator=(const Terminal&) = delete;

    ~Terminal() {
        std::cin.rdbuf(savedIn);
        std::cin.clear();
        std::clog.rdbuf(savedLog);
        std::cout.rdbuf(savedOut);
    }

    std::string logged() const { return log.str(); }

    std::string written() const { return output.str(); }

private:
    std::istringstream input;
    std::ostringstream log;
    std::ostringstream output;
    std::streambuf* savedIn;
    std::streambuf* savedLog;
    std::streambuf* savedOut;
};

const MessagePrompt PROMPT("All data will be lost.", "Proceed?", true);

TEST(MessagePrompt, KeepsWhatItIsMadeFrom) {
    EXPECT_EQ(PROMPT.getWarning(), "All data will be lost.");
    EXPECT_TRUE(PROMPT.getAskUser());
    EXPECT_FALSE(MessagePrompt("", "", false).getAskUser());
}

TEST(MessagePrompt, WritesWarningAndQuestionToStandardErrorOnly) {
    Terminal terminal("y");

    PROMPT.promptUser();

    EXPECT_EQ(terminal.logged(), "All data will be lost.\nProceed? (Y|N): ");
    EXPECT_EQ(terminal.written(), "");
}

TEST(MessagePrompt, AsksWhetherOrNotTheUserIsToBeAsked) {
    Terminal terminal("n");

    EXPECT_NE(MessagePrompt("", "", false).promptUser(), nullptr);
    EXPECT_EQ(terminal.logged(), "\n (Y|N): ");
}

TEST(MessagePrompt, TakesTheFirstCharacterAsTheAnswer) {
    struct Row {
        std::string typed;
        bool agreed;
    };

    const Row rows[] = {
        {"y", true},          {"Y", true},   {"y\n", true},  {"yes\n", true}, {"Yes\n", true},
        {"yn", true},         {"n", false},  {"N\n", false}, {"no\n", false}, {"\n", false},
        {"", false},          {" y", false}, {"\ny", false}, {"ny", false},   {"\xff", false},
        {{'\0', 'y'}, false}, {"1", false},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.typed);
        Terminal terminal(row.typed);
        const auto refusal = PROMPT.promptUser();
        EXPECT_EQ(refusal == nullptr, row.agreed);
        if (!refusal) continue;
        EXPECT_EQ(refusal->getErrorCode(), 0);
        EXPECT_EQ(refusal->outputText(), "Cancelled");
        EXPECT_EQ(refusal->outputXml(), "<Result>Cancelled</Result>\n");
        EXPECT_EQ(refusal->outputJson(), "{\n\t\"Result\":\"Cancelled\"\n}");
    }
}

TEST(MessagePrompt, LeavesTheRestOfTheLineUnread) {
    Terminal terminal("yes\n");

    PROMPT.promptUser();

    std::string rest;
    std::getline(std::cin, rest);
    EXPECT_EQ(rest, "es");
}

TEST(MessagePrompt, IsCancelledOnceTheInputHasFailed) {
    Terminal terminal("y");
    std::cin.setstate(std::ios::failbit);

    EXPECT_NE(PROMPT.promptUser(), nullptr);
}

TEST(PropertyPrompts, HoldTheTemperatureThreshold) {
    const auto& prompts = propertyPrompts();

    ASSERT_EQ(prompts.size(), 1U);
    ASSERT_EQ(prompts.begin()->first, "TempThreshold");
    const MessagePrompt& prompt = prompts.begin()->second;
    EXPECT_FALSE(prompt.getAskUser());
    const std::string warning =
        "NOTE: NVMe* 2.5\" Drives begin thermal throttling at 66 deg C and NVMe* AIC drives begin "
        "thermal throttling at 75 deg C. Setting a TempThreshold value above these temperatures "
        "will mean the drive will start being thermally throttled before the drive generates a "
        "warning. Please consult the product specifications for the drive being used to set this "
        "value correctly.";
    EXPECT_EQ(prompt.getWarning(), warning);

    Terminal terminal("y");
    EXPECT_EQ(prompt.promptUser(), nullptr);
    EXPECT_EQ(terminal.logged(), warning + "\nProceed with setting TempThreshold? (Y|N): ");
}

}  // namespace
}  // namespace tavik::prompt
