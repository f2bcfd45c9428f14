// Which commands a line that asks for help is answered with.
#include "interfaces/cli/cliframework/HelpFeature.h"

#include "interfaces/cli/cliframework/Framework.h"
#include "interfaces/cli/cliframework/HelpResult.h"

#include "tests/interfaces/cli/cliframework/FakeFeature.h"

#include <gtest/gtest.h>

namespace cli::framework {
namespace {

/// The names of the commands shown, in their order.
std::vector<std::string> shownIn(const ResultBase& result) {
    const std::string xml = result.outputXml();
    const std::string head = "<Command Name=\"";
    std::vector<std::string> names;
    for (auto at = xml.find(head); at != std::string::npos; at = xml.find(head, at)) {
        at += head.size();
        names.push_back(xml.substr(at, xml.find('"', at) - at));
    }
    return names;
}

using Names = std::vector<std::string>;

class HelpFeatureTest : public ::testing::Test {
protected:
    void SetUp() override {
        Framework::tearDown();

        CommandSpec show(0, "ShowAll", VERB_SHOW, "Shows.");
        show.addOption(OPTION_ALL);  // second option: -display
        show.addOption(OPTION_DISPLAY);
        show.addTarget("-disk", true, "", false, "");
        CommandSpec enableLog(1, "EnableLog", VERB_SET, "Logs.");
        enableLog.addOption(OPTION_WAIT);  // second option: -source
        enableLog.addOption(OPTION_SOURCE);
        enableLog.addTarget("-disk", true, "", false, "");
        enableLog.addProperty("EnableLog", true, "", true, "");
        CommandSpec logFile(2, "LogFile", VERB_SET, "Names the log.");
        logFile.addOption(OPTION_FORCE);  // second option: -help
        logFile.addTarget("-disk", true, "", false, "");
        logFile.addProperty("LogFile", true, "", true, "");
        Framework::getInstance().addFeature(
            "Fake", std::make_unique<testing::FakeFeature>(
                        "Fake", journal, std::vector<CommandSpec>{show, logFile, enableLog}));
    }

    void TearDown() override { Framework::tearDown(); }

    static HelpResult help(std::map<std::string, std::string> properties) {
        ParsedCommand parsed;
        parsed.verb = "help";
        parsed.properties = std::move(properties);
        return dynamic_cast<const HelpResult&>(*HelpFeature().run({}, parsed));
    }

    std::vector<std::string> journal;
};

TEST_F(HelpFeatureTest, DeclaresTheHelpCommand) {
    std::vector<CommandSpec> commands(1);
    HelpFeature().getPaths(commands);

    ASSERT_EQ(commands.size(), 2U);
    const CommandSpec& declared = commands[1];
    EXPECT_EQ(declared.id, 0);
    EXPECT_EQ(declared.name, "Help");
    EXPECT_EQ(declared.verb, "help");
    EXPECT_EQ(declared.helpText,
              "Retrieve a list of supported commands. Filter the results by providing a specific "
              "verb or command name. By default, if the filter is specific enough to indicate a "
              "single command, detailed help will be displayed for that command.");
    EXPECT_EQ(declared.asStr(), "help [Name = (name)] [verb = (verb)]");
    EXPECT_TRUE(declared.options.empty());
}

TEST_F(HelpFeatureTest, ListsEveryCommandInTheOrderOfSortOption) {
    const HelpResult result = help({});

    // By "-source", "-output", "-help" and "-display".
    EXPECT_EQ(shownIn(result), (Names{"EnableLog", "Help", "LogFile", "ShowAll"}));
    EXPECT_FALSE(result.getShowFull());
}

TEST_F(HelpFeatureTest, GivesEveryCommandTheSharedOptions) {
    const HelpResult result = help({{"Name", "ShowAll"}});

    EXPECT_EQ(result.outputXml(),
              "<Help>\n"
              "\t<Command Name=\"ShowAll\">\n"
              "\t\t<Description>Shows.</Description>\n"
              "\t\t<Verb>show</Verb>\n"
              "\t\t<Options>\n"
              "\t\t\t<Option Name=\"-all\" Description=\"Display all possible attributes.\" "
              "Required=\"False\" Value=\"\" ValueRequired=\"False\"/>\n"
              "\t\t\t<Option Name=\"-display\" Description=\"Specify which attributes are "
              "displayed.\" Required=\"False\" Value=\"Property1,...\" ValueRequired=\"True\"/>\n"
              "\t\t\t<Option Name=\"-help\" Description=\"Display help for the command.\" "
              "Required=\"False\" Value=\"\" ValueRequired=\"False\"/>\n"
              "\t\t\t<Option Name=\"-output\" Description=\"Change the output format. One of "
              "\"text\", \"nvmxml\" or \"json\".\" Required=\"False\" "
              "Value=\"text|nvmxml|json\" ValueRequired=\"True\"/>\n"
              "\t\t</Options>\n"
              "\t\t<Targets>\n"
              "\t\t\t<Target Name=\"-disk\" Description=\"\" Required=\"True\" Value=\"\" "
              "ValueRequired=\"False\"/>\n"
              "\t\t</Targets>\n"
              "\t\t<Properties></Properties>\n"
              "\t</Command>\n"
              "</Help>\n");
}

TEST_F(HelpFeatureTest, AppliesBothFilters) {
    struct Row {
        std::map<std::string, std::string> properties;
        Names shown;
        bool full;
    };

    const Row rows[] = {
        {{{"verb", "SHOW"}}, {"ShowAll"}, true},
        {{{"verb", "set"}}, {"EnableLog", "LogFile"}, false},
        {{{"verb", "se"}}, {}, false},
        {{{"verb", "help"}}, {"Help"}, true},
        {{{"Name", "log"}}, {"EnableLog", "LogFile"}, false},
        {{{"Name", "LOGFILE"}}, {"LogFile"}, true},
        {{{"Name", "nothing"}}, {}, false},
        {{{"Name", "L"}}, {"EnableLog", "Help", "LogFile", "ShowAll"}, false},
        {{{"verb", "set"}, {"Name", "LogFile"}}, {"LogFile"}, true},
        {{{"verb", "show"}, {"Name", "LogFile"}}, {}, false},
        {{{"verb", ""}, {"Name", ""}}, {"EnableLog", "Help", "LogFile", "ShowAll"}, false},
        {{{"name", "LogFile"}}, {"EnableLog", "Help", "LogFile", "ShowAll"}, false},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(::testing::PrintToString(row.properties));
        const HelpResult result = help(row.properties);
        EXPECT_EQ(shownIn(result), row.shown);
        EXPECT_EQ(result.getCount(), row.shown.size());
        EXPECT_EQ(result.getShowFull(), row.full);
        EXPECT_EQ(result.getErrorCode(), 0);
    }
}

TEST_F(HelpFeatureTest, ShowsItsOwnCommandForEveryOtherVerb) {
    HelpFeature feature(CommandSpec(7, "Erase", VERB_DELETE, "Erases."));
    for (const char* verb : {"delete", "Help", "HELP", "helper", ""}) {
        SCOPED_TRACE(verb);
        ParsedCommand parsed;
        parsed.verb = verb;
        const auto result = feature.run(CommandSpec(1, "Other", VERB_SHOW, ""), parsed);
        EXPECT_EQ(shownIn(*result), Names{"Erase"});
        const auto* const helpResult = dynamic_cast<const HelpResult*>(result.get());
        ASSERT_NE(helpResult, nullptr);
        EXPECT_TRUE(helpResult->getShowFull());
    }
}

TEST_F(HelpFeatureTest, ListsEverythingForTheHelpVerbThoughItHoldsACommand) {
    HelpFeature feature(CommandSpec(7, "Erase", VERB_DELETE, "Erases."));
    ParsedCommand parsed;
    parsed.verb = "help";

    EXPECT_EQ(shownIn(*feature.run({}, parsed)),
              (Names{"EnableLog", "Help", "LogFile", "ShowAll"}));
}

TEST_F(HelpFeatureTest, IsReachedByTheLinesThatAskForHelp) {
    struct Row {
        std::vector<std::string> line;
        Names shown;
    };

    const Names all = {"EnableLog", "Help", "LogFile", "ShowAll"};
    const Row rows[] = {
        {{}, all},
        {{"help"}, all},
        {{"help", "-help"}, all},
        {{"HELP", "-h"}, all},
        {{"help", "verb=show"}, {"ShowAll"}},
        {{"help", "VERB=show"}, {"ShowAll"}},
        {{"help", "Name=log", "verb=SET"}, {"EnableLog", "LogFile"}},
        {{"help", "Name=nothing"}, {}},
        {{"show", "-help", "-disk"}, {"ShowAll"}},
        {{"set", "-H", "-disk", "LogFile=x"}, {"LogFile"}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(::testing::PrintToString(row.line));
        const auto result = Framework::getInstance().execute(row.line);
        ASSERT_NE(result, nullptr);
        EXPECT_NE(dynamic_cast<const HelpResult*>(result.get()), nullptr) << result->outputText();
        EXPECT_EQ(shownIn(*result), row.shown);
        EXPECT_EQ(result->getErrorCode(), 0);
    }
}

TEST_F(HelpFeatureTest, IsNotReachedByABareWordBehindHelp) {
    EXPECT_EQ(Framework::getInstance().execute({"help", "show"})->getErrorCode(), 201);
}

TEST(HelpFeatureMatch, FindsTheFilterAnywhereInTheNameInAnyCase) {
    EXPECT_TRUE(HelpFeature::matchCommandName("log", "EnableLog"));
    EXPECT_TRUE(HelpFeature::matchCommandName("LOGF", "LogFile"));
    EXPECT_TRUE(HelpFeature::matchCommandName("", "LogFile"));
    EXPECT_FALSE(HelpFeature::matchCommandName("logs", "LogFile"));
    EXPECT_FALSE(HelpFeature::matchCommandName("LogFile", "Log"));
    EXPECT_FALSE(HelpFeature::matchCommandName("x", ""));
}

}  // namespace
}  // namespace cli::framework
