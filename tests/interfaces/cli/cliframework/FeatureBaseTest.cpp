// The check of the options that all commands share, and the order of commands.
#include "interfaces/cli/cliframework/FeatureBase.h"

#include "tests/interfaces/cli/cliframework/FakeFeature.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace cli::framework {
namespace {

using Options = std::map<std::string, std::string>;

struct ValidateRow {
    Options options;
    std::string text;  ///< of the refusal; empty: let through
};

CommandRef withOptions(const std::vector<std::string>& names) {
    CommandRef command;
    for (const std::string& name : names)
        command.addOption(name, false, "", false, "", "");
    return command;
}

std::unique_ptr<ResultBase> validate(const ParsedCommand& parsed) {
    std::vector<std::string> journal;
    testing::FakeFeature feature("Fake", journal, {});
    return feature.validate(parsed);
}

TEST(FeatureBase, ChecksTheSharedOptionsInAFixedOrder) {
    const std::string both = "Syntax Error: Options 'all' and 'display' cannot be used together.";
    const std::string allValue = "Syntax Error: Option 'all' does not accept a value.";
    const std::string noDisplay = "Syntax Error: A value is required for the option 'display'.";
    const std::string helpValue = "Syntax Error: Option 'help' does not accept a value.";
    const std::string output = "Syntax Error: Option 'output' expects 'text', 'nvmxml' or 'json'.";
    const ValidateRow rows[] = {
        {{}, ""},
        {{{"-all", ""}}, ""},
        {{{"-display", "Name"}}, ""},
        {{{"-help", ""}}, ""},
        {{{"-all", ""}, {"-display", "x"}}, both},
        {{{"-all", "1"}}, allValue},
        {{{"-display", ""}}, noDisplay},
        {{{"-help", "yes"}}, helpValue},
        {{{"-output", ""}}, output},
        {{{"-output", "XML"}}, output},
        {{{"-output", "xml"}}, output},
        {{{"-output", "csv"}}, output},
        {{{"-output", "nvmxm"}}, output},
        {{{"-output", "text"}}, ""},
        {{{"-output", "nvmxml"}}, ""},
        {{{"-output", "NVMXML"}}, ""},
        {{{"-output", "json"}}, ""},
        {{{"-output", "Json"}}, ""},
        {{{"-output", "esx"}}, ""},
        {{{"-output", "ESX"}}, ""},
        // the first hit counts
        {{{"-all", "1"}, {"-display", ""}, {"-help", "1"}, {"-output", ""}}, both},
        {{{"-all", "1"}, {"-help", "1"}, {"-output", ""}}, allValue},
        {{{"-display", ""}, {"-help", "1"}, {"-output", ""}}, noDisplay},
        {{{"-help", "1"}, {"-output", ""}}, helpValue},
        // left to the parser's value rules
        {{{"-wait", "yes"}, {"-force", "yes"}, {"-examine", "yes"}}, ""},
        {{{"-source", ""}}, ""},
        // long names only
        {{{"-a", "1"}, {"-d", ""}, {"-h", "1"}, {"-o", "pdf"}}, ""},
        {{{"-ALL", "1"}, {"-Display", ""}}, ""},
    };
    for (const ValidateRow& row : rows) {
        SCOPED_TRACE(::testing::PrintToString(row.options));
        ParsedCommand parsed;
        parsed.options = row.options;
        const auto refusal = validate(parsed);
        ASSERT_EQ(refusal != nullptr, !row.text.empty());
        if (!refusal) continue;
        EXPECT_EQ(refusal->outputText(), row.text);
        EXPECT_EQ(refusal->getErrorCode(), 201);
    }
}

TEST(FeatureBase, LooksAtNoTargetsAndNoProperties) {
    ParsedCommand parsed;
    parsed.targets = {{"-all", "1"}, {"-display", ""}, {"-output", "pdf"}};
    parsed.properties = parsed.targets;

    EXPECT_EQ(validate(parsed), nullptr);
}

TEST(SortOption, ComparesTheNamesOfTheSecondOptions) {
    struct Row {
        std::string x;
        std::string y;
        bool before;
    };

    const Row rows[] = {
        {"-output", "-display", true},
        {"-display", "-output", false},
        {"-output", "-output", false},
        {"-OUTPUT", "-output", false},
        {"-output", "-OUTPUT", false},
        {"-Output", "-display", true},
        {"-display", "-OUTPUT", false},
        {"-out", "-output", true},
        {"-output", "-out", false},
        {"-OUT", "-output", true},
        {"", "-output", true},
        {"-output", "", false},
        {"", "", false},
        {"-help", "-display", true},
        {"-help", "-output", false},
        {"-ab", "-b", false},
        {"-b", "-ab", true},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.x + " " + row.y);
        EXPECT_EQ(SortOption(withOptions({"-first", row.x}), withOptions({"-first", row.y})),
                  row.before);
    }
}

TEST(SortOption, LooksAtTheSecondOptionOnly) {
    EXPECT_FALSE(
        SortOption(withOptions({"-z", "-help", "-a"}), withOptions({"-a", "-help", "-z"})));
    EXPECT_FALSE(
        SortOption(withOptions({"-a", "-help", "-z"}), withOptions({"-z", "-help", "-a"})));
}

TEST(SortOption, TakesACommandWithFewerThanTwoOptionsAsNameless) {
    EXPECT_TRUE(SortOption(withOptions({"-z"}), withOptions({"-a", "-b"})));
    EXPECT_FALSE(SortOption(withOptions({"-a", "-b"}), withOptions({})));
    EXPECT_FALSE(SortOption(withOptions({}), withOptions({"-z"})));
}

TEST(SortOption, SortsDownwardsWithPrefixesFirst) {
    std::vector<CommandRef> commands;
    for (const char* name : {"-display", "-output", "-help", "-out", "-source", "-all"}) {
        commands.push_back(withOptions({"-first", name}));
    }

    std::sort(commands.begin(), commands.end(), SortOption);

    std::vector<std::string> order;
    for (const CommandRef& command : commands)
        order.push_back(command.options[1].name);
    EXPECT_EQ(order, (std::vector<std::string>{"-source", "-out", "-output", "-help", "-display",
                                               "-all"}));
}

}  // namespace
}  // namespace cli::framework
