// The declaration of a command: its parts and its text form.
#include "interfaces/cli/cliframework/CommandSpec.h"

#include <gtest/gtest.h>

namespace cli::framework {
namespace {

TEST(CommandSpec, StartsEmpty) {
    const CommandSpec spec;
    EXPECT_EQ(0, spec.id);
    EXPECT_EQ("", spec.name);
    EXPECT_EQ("", spec.verb);
    EXPECT_EQ("", spec.helpText);
    EXPECT_TRUE(spec.options.empty());
    EXPECT_TRUE(spec.targets.empty());
    EXPECT_TRUE(spec.properties.empty());
}

TEST(CommandSpec, TakesItsFieldsInOrder) {
    const CommandSpec spec(7, "EnableLog", "set", "Enable the log.");
    EXPECT_EQ(7, spec.id);
    EXPECT_EQ("EnableLog", spec.name);
    EXPECT_EQ("set", spec.verb);
    EXPECT_EQ("Enable the log.", spec.helpText);
    EXPECT_TRUE(spec.options.empty());
    EXPECT_TRUE(spec.targets.empty());
    EXPECT_TRUE(spec.properties.empty());
}

TEST(CommandSpec, KeepsTheFirstPartOfAName) {
    CommandSpec spec;
    CommandPart& first = spec.addOption(OPTION_SOURCE);
    CommandPart& second = spec.addOption(OPTION_SOURCE_REQUIRED);
    EXPECT_EQ(&first, &second);
    ASSERT_EQ(1U, spec.options.size());
    EXPECT_FALSE(spec.options.front().required);
}

TEST(CommandSpec, LeavesOneEntryWhenHelpIsAddedTwice) {
    CommandSpec spec;
    spec.addOption(OPTION_HELP);
    spec.addOption(OPTION_HELP);
    EXPECT_EQ(1U, spec.options.size());
}

TEST(CommandSpec, TellsPartNamesApartByCase) {
    CommandSpec spec;
    spec.addProperty("Name", false, "a", false, "");
    spec.addProperty("name", false, "b", false, "");
    ASSERT_EQ(2U, spec.properties.size());
    EXPECT_EQ("a", spec.properties[0].valueText);
    EXPECT_EQ("b", spec.properties[1].valueText);
}

TEST(CommandSpec, ReturnsTheAddedPartForChanges) {
    CommandSpec spec;
    spec.addTarget("-t", true, "", false, "").noValue = true;
    EXPECT_TRUE(spec.targets.front().noValue);
}

TEST(CommandSpec, AppendsACopyOfThePart) {
    std::vector<CommandPart> list;
    CommandPart part = OPTION_WAIT;
    CommandPart& held = CommandSpec::addPart(list, part);
    part.name = "-other";
    EXPECT_EQ(&list.front(), &held);
    EXPECT_EQ("-wait", held.name);
}

TEST(CommandSpec, AddsASharedPartToTheListOfItsKind) {
    CommandSpec spec;
    const CommandPart& option = spec.addOption(OPTION_DISPLAY);
    const CommandPart& target = spec.addTarget(OPTION_SOURCE_REQUIRED);
    const CommandPart& property = spec.addProperty(PROPERTY_VERB);
    ASSERT_EQ(1U, spec.options.size());
    ASSERT_EQ(1U, spec.targets.size());
    ASSERT_EQ(1U, spec.properties.size());
    EXPECT_EQ(&spec.options.front(), &option);
    EXPECT_EQ(&spec.targets.front(), &target);
    EXPECT_EQ(&spec.properties.front(), &property);
    EXPECT_EQ("-display", option.name);
    EXPECT_EQ("-source", target.name);
    EXPECT_TRUE(target.required);
    EXPECT_EQ("path", target.valueText);
    EXPECT_EQ("verb", property.name);
}

TEST(CommandSpec, BuildsPartsFromTheirFields) {
    CommandSpec spec;
    const CommandPart& option = spec.addOption("-mode", true, "fast", true, "The mode.", "-m");
    EXPECT_EQ(&spec.options.front(), &option);
    EXPECT_EQ("-mode", option.name);
    EXPECT_TRUE(option.required);
    EXPECT_EQ("fast", option.valueText);
    EXPECT_TRUE(option.valueRequired);
    EXPECT_EQ("The mode.", option.helpText);
    EXPECT_EQ("-m", option.shortName);
    EXPECT_FALSE(option.noValue);
    EXPECT_FALSE(option.found);

    const CommandPart& target = spec.addTarget("-disk", false, "index", true, "The disk.");
    EXPECT_EQ(&spec.targets.front(), &target);
    EXPECT_EQ("-disk", target.name);
    EXPECT_FALSE(target.required);
    EXPECT_EQ("index", target.valueText);
    EXPECT_TRUE(target.valueRequired);
    EXPECT_EQ("The disk.", target.helpText);
    EXPECT_EQ("", target.shortName);

    const CommandPart& property = spec.addProperty("Size", true, "bytes", false, "The size.");
    EXPECT_EQ(&spec.properties.front(), &property);
    EXPECT_EQ("Size", property.name);
    EXPECT_TRUE(property.required);
    EXPECT_EQ("bytes", property.valueText);
    EXPECT_FALSE(property.valueRequired);
    EXPECT_EQ("The size.", property.helpText);
    EXPECT_EQ("", property.shortName);
}

TEST(CommandSpec, WritesEachPartFollowedByOneBlank) {
    struct Row {
        CommandPart part;
        const char* asOption;
        const char* asProperty;
    };

    const Row rows[] = {
        // name, required, value text, value required, help, short name
        {{"-t", false, "", false, "", ""}, "[-t] ", "[-t] "},
        {{"-t", true, "", false, "", ""}, "-t ", "-t "},
        {{"-t", true, "", true, "", ""}, "-t ", "-t "},
        {{"-t", false, "x", false, "", ""}, "[-t [(x)]] ", "[-t = [(x)]] "},
        {{"-t", true, "x", false, "", ""}, "-t [(x)] ", "-t = [(x)] "},
        {{"-t", false, "x", true, "", ""}, "[-t (x)] ", "[-t = (x)] "},
        {{"-t", true, "x", true, "", ""}, "-t (x) ", "-t = (x) "},
        {{"-t", false, "", false, "", "-s"}, "[-t|-s] ", "[-t|-s] "},
        {{"-t", true, "x", true, "", "-s"}, "-t|-s (x) ", "-t|-s = (x) "},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.asOption);
        EXPECT_EQ(row.asOption, CommandSpec::listToString({row.part}, false));
        EXPECT_EQ(row.asProperty, CommandSpec::listToString({row.part}, true));
    }
    EXPECT_EQ("", CommandSpec::listToString({}, false));
    EXPECT_EQ("[-all|-a] [-wait|-w] ", CommandSpec::listToString({OPTION_ALL, OPTION_WAIT}, false));
}

TEST(CommandSpec, ReadsAsTheCommandThatSetsTheLog) {
    CommandSpec spec(1, "EnableLog", "set", "");
    spec.addOption(OPTION_HELP);
    spec.addOption(OPTION_OUTPUT);
    spec.addTarget("-system", true, "", false, "");
    spec.addProperty("EnableLog", true, "'true'|'false'", true, "");
    EXPECT_EQ("set [-help|-h] [-output|-o (text|nvmxml|json)] -system "
              "EnableLog = ('true'|'false')",
              spec.asStr());
}

TEST(CommandSpec, ReadsAsTheCommandThatShowsTheConfiguration) {
    CommandSpec spec(0, "System", "show", "");
    spec.addOption(OPTION_HELP);
    spec.addOption(OPTION_DISPLAY);
    spec.addOption(OPTION_ALL);
    spec.addOption(OPTION_OUTPUT);
    spec.addTarget("-system", true, "", false, "");
    EXPECT_EQ("show [-help|-h] [-display|-d (Property1,...)] [-all|-a] "
              "[-output|-o (text|nvmxml|json)] -system",
              spec.asStr());
}

TEST(CommandSpec, ReadsAsItsVerbAloneWithoutParts) {
    EXPECT_EQ("version", CommandSpec(0, "Version", "version", "Help.").asStr());
}

TEST(CommandSpec, ReadsAsNothingWithoutVerbAndParts) {
    EXPECT_EQ("", CommandSpec().asStr());
}

}  // namespace
}  // namespace cli::framework
