// One line from its words to its result: the registry, the collecting and narrowing of commands,
// and the calls of their features.
#include "interfaces/cli/cliframework/Framework.h"

#include "interfaces/cli/cliframework/HelpResult.h"
#include "interfaces/cli/cliframework/Logger.h"
#include "interfaces/cli/cliframework/Parser.h"
#include "interfaces/cli/cliframework/StreamChannel.h"

#include "tests/interfaces/cli/cliframework/FakeFeature.h"

#include <gtest/gtest.h>

#include <sstream>

namespace cli::framework {
namespace {

using Lines = std::vector<std::string>;
using testing::FakeFeature;

constexpr bool REQUIRED = true;
constexpr bool OPTIONAL = false;
constexpr bool VALUE_REQUIRED = true;
constexpr bool VALUE_OPEN = false;

CommandSpec showDisk() {
    CommandSpec spec(1, "ShowDisk", VERB_SHOW, "Shows disks.");
    spec.addOption(OPTION_ALL);
    spec.addOption(OPTION_DISPLAY);
    spec.addTarget("-disk", REQUIRED, "index", VALUE_OPEN, "The disk.");
    return spec;
}

CommandSpec showLog() {
    CommandSpec spec(2, "ShowLog", VERB_SHOW, "Shows a log.");
    spec.addTarget("-log", REQUIRED, "", VALUE_OPEN, "The log.");
    return spec;
}

CommandSpec setLimit() {
    CommandSpec spec(3, "Limit", VERB_SET, "Sets the limit.");
    spec.addTarget("-disk", REQUIRED, "index", VALUE_REQUIRED, "The disk.");
    spec.addProperty("Limit", REQUIRED, "0|1", VALUE_REQUIRED, "The limit.");
    return spec;
}

CommandSpec setMode() {
    CommandSpec spec(4, "Mode", VERB_SET, "Sets the mode.");
    spec.addOption(OPTION_FORCE);
    spec.addTarget("-disk", REQUIRED, "index", VALUE_REQUIRED, "The disk.");
    spec.addProperty("Mode", REQUIRED, "mode", VALUE_REQUIRED, "The mode.");
    return spec;
}

CommandSpec loadSource() {
    CommandSpec spec(5, "Load", VERB_LOAD, "Loads a file.");
    spec.addOption(OPTION_SOURCE_REQUIRED);
    spec.addOption(OPTION_WAIT);
    spec.addTarget("-disk", REQUIRED, "index", VALUE_OPEN, "The disk.");
    return spec;
}

// Two commands that no line can tell apart.
CommandSpec startFirst() {
    return {6, "First", VERB_START, "Starts."};
}

CommandSpec startSecond() {
    return {7, "Second", VERB_START, "Starts as well."};
}

std::vector<CommandSpec> declaredCommands() {
    return {showDisk(),   showLog(),    setLimit(),   setMode(),
            loadSource(), startFirst(), startSecond()};
}

const std::string USAGE_SHOW_DISK = "show [-all|-a] [-display|-d (Property1,...)] [-help|-h] "
                                    "[-output|-o (text|nvmxml|json)] -disk [(index)]";
const std::string USAGE_SHOW_LOG = "show [-help|-h] [-output|-o (text|nvmxml|json)] -log";
const std::string USAGE_LIMIT =
    "set [-help|-h] [-output|-o (text|nvmxml|json)] -disk (index) Limit = (0|1)";
const std::string USAGE_MODE =
    "set [-force|-f] [-help|-h] [-output|-o (text|nvmxml|json)] -disk (index) Mode = (mode)";
const std::string USAGE_LOAD =
    "load -source (path) [-wait|-w] [-help|-h] [-output|-o (text|nvmxml|json)] -disk [(index)]";
const std::string USAGE_START = "start [-help|-h] [-output|-o (text|nvmxml|json)]";
const std::string USAGE_HELP =
    "help [-help|-h] [-output|-o (text|nvmxml|json)] [Name = (name)] [verb = (verb)]";

const std::string MORE_THAN_ONE =
    "Error: The command list had more than one after filtering. This means that there might be "
    "more than one CommandSpec with the same required syntax.";

/// Catches the framework's log while it lives.
class LogCapture {
public:
    LogCapture() { logger.setChannel(&channel); }

    LogCapture(const LogCapture&) = delete;
    LogCapture& operator=(const LogCapture&) = delete;

    ~LogCapture() { logger.setChannel(nullptr); }

    std::string text() const { return stream.str(); }

private:
    std::ostringstream stream;
    StreamChannel channel{&stream};
};

class FrameworkTest : public ::testing::Test {
protected:
    void SetUp() override { Framework::tearDown(); }

    void TearDown() override { Framework::tearDown(); }

    std::unique_ptr<FeatureBase> feature(const std::string& name,
                                         std::vector<CommandSpec> specs = {}) {
        return std::make_unique<FakeFeature>(name, journal, std::move(specs));
    }

    /// Carries `line` out with all commands of this file declared.
    std::unique_ptr<ResultBase> execute(const Lines& line) {
        Framework& framework = Framework::getInstance();
        auto fake = feature("Fake", declaredCommands());
        framework.removeFeature("Fake");
        journal.clear();
        framework.addFeature("Fake", std::move(fake));
        return framework.execute(line);
    }

    Lines journal;
};

TEST_F(FrameworkTest, MakesItsInstanceWithTheHelpFeature) {
    EXPECT_FALSE(Framework::instanceFlag);
    EXPECT_EQ(Framework::pFrameworkInst, nullptr);

    Framework& framework = Framework::getInstance();

    EXPECT_TRUE(Framework::instanceFlag);
    EXPECT_EQ(&framework, Framework::pFrameworkInst.get());
    EXPECT_EQ(&framework, &Framework::getInstance());
    EXPECT_EQ(framework.programName, "");
    const auto commands = framework.buildCommands();
    ASSERT_EQ(commands.size(), 1U);
    EXPECT_EQ(commands[0].name, "Help");
    EXPECT_NE(commands[0].feature, nullptr);
    EXPECT_FALSE(framework.addFeature("HelpFeature", feature("Other")));
}

TEST_F(FrameworkTest, MakesAFreshInstanceAfterTheTeardown) {
    Framework::getInstance().programName = "tavik";
    Framework::getInstance().addFeature("Fake", feature("Fake", declaredCommands()));

    Framework::tearDown();

    EXPECT_EQ(journal, Lines{"Fake destroyed"});
    EXPECT_FALSE(Framework::instanceFlag);
    EXPECT_EQ(Framework::pFrameworkInst, nullptr);
    EXPECT_EQ(Framework::getInstance().programName, "");
    EXPECT_EQ(Framework::getInstance().buildCommands().size(), 1U);
}

TEST_F(FrameworkTest, MayBeTornDownTwice) {
    Framework::getInstance();
    Framework::tearDown();
    Framework::tearDown();

    EXPECT_FALSE(Framework::instanceFlag);
}

TEST_F(FrameworkTest, LeavesAFeatureWithItsCallerIfTheKeyIsTaken) {
    Framework& framework = Framework::getInstance();
    auto first = feature("First");
    auto second = feature("Second");

    EXPECT_TRUE(framework.addFeature("Key", std::move(first)));
    EXPECT_FALSE(framework.addFeature("Key", std::move(second)));

    EXPECT_NE(second, nullptr);
    EXPECT_EQ(journal, Lines{});
    EXPECT_TRUE(framework.addFeature("key", std::move(second)));
    Framework::tearDown();
    EXPECT_EQ(journal, (Lines{"First destroyed", "Second destroyed"}));
}

TEST_F(FrameworkTest, TakesNoNullFeature) {
    EXPECT_FALSE(Framework::getInstance().addFeature("Key", nullptr));
    EXPECT_EQ(Framework::getInstance().buildCommands().size(), 1U);
}

TEST_F(FrameworkTest, RemovesTheFeatureOfExactlyThatKey) {
    Framework& framework = Framework::getInstance();
    framework.addFeature("Key", feature("Upper"));
    framework.addFeature("key", feature("Lower"));

    framework.removeFeature("KEY");
    framework.removeFeature("");
    EXPECT_EQ(journal, Lines{});

    framework.removeFeature("key");
    EXPECT_EQ(journal, Lines{"Lower destroyed"});
    EXPECT_TRUE(framework.addFeature("key", feature("Again")));
}

TEST_F(FrameworkTest, ClearsItsFeaturesInTheOrderOfTheirKeys) {
    Framework& framework = Framework::getInstance();
    framework.addFeature("NorvoSSD", feature("b", declaredCommands()));
    framework.addFeature("Version", feature("d"));
    framework.addFeature("System", feature("c"));
    framework.addFeature("A", feature("a"));

    framework.clearFeatureList();

    EXPECT_EQ(journal, (Lines{"a destroyed", "b destroyed", "c destroyed", "d destroyed"}));
    EXPECT_TRUE(framework.buildCommands().empty());
    EXPECT_TRUE(Framework::instanceFlag);
}

TEST_F(FrameworkTest, CollectsCommandsInTheOrderOfTheFeatureKeys) {
    Framework& framework = Framework::getInstance();
    framework.addFeature("System", feature("c", {startFirst(), startSecond()}));
    framework.addFeature("NorvoSSD", feature("a", {showLog()}));
    framework.addFeature("Version", feature("d", {showDisk()}));
    framework.addFeature("A", feature("b", {setLimit()}));

    Lines names;
    for (const CommandRef& command : framework.buildCommands())
        names.push_back(command.name);

    EXPECT_EQ(names, (Lines{"Limit", "Help", "ShowLog", "First", "Second", "ShowDisk"}));
}

TEST_F(FrameworkTest, NamesTheFeatureOfEachCommand) {
    Framework& framework = Framework::getInstance();
    auto owned = feature("Fake", {showLog(), showDisk()});
    const FeatureBase* const fake = owned.get();
    framework.addFeature("Z", std::move(owned));

    const auto commands = framework.buildCommands();

    ASSERT_EQ(commands.size(), 3U);
    EXPECT_NE(commands[0].feature, fake);
    EXPECT_EQ(commands[1].feature, fake);
    EXPECT_EQ(commands[2].feature, fake);
}

TEST_F(FrameworkTest, AddsTheSharedOptionsBehindTheDeclaredOnes) {
    CommandSpec own(0, "Own", VERB_SHOW, "");
    own.addOption("-output", REQUIRED, "mine", VALUE_OPEN, "My own.", "-m");
    own.addOption(OPTION_ALL);
    Framework::getInstance().addFeature("Z", feature("Fake", {showLog(), own}));

    const auto commands = Framework::getInstance().buildCommands();

    ASSERT_EQ(commands.size(), 3U);
    EXPECT_EQ(commands[0].asStr(), USAGE_HELP);
    EXPECT_EQ(commands[1].asStr(), USAGE_SHOW_LOG);
    EXPECT_EQ(commands[2].asStr(), "show -output|-m [(mine)] [-all|-a] [-help|-h]");
}

TEST_F(FrameworkTest, FoldsShortOptionsIntoTheirNames) {
    CommandSpec spec(0, "All", VERB_SHOW, "");
    for (const CommandPart& option : {OPTION_ALL, OPTION_DISPLAY, OPTION_WAIT, OPTION_FORCE,
                                      OPTION_EXAMINE, OPTION_OUTPUT, OPTION_HELP}) {
        spec.addOption(option);
    }
    spec.addOption("-zero", OPTIONAL, "", VALUE_OPEN, "", "-z");
    spec.addTarget("-t", OPTIONAL, "", VALUE_OPEN, "");
    const std::vector<CommandRef> commands = {{spec, nullptr}};

    struct Row {
        const char* word;
        const char* text;
    };

    const Row rows[] = {
        {"-a", "-all"},           {"-A", "-all"},     {"-all", "-all"},   {"-d", "-display"},
        {"-display", "-display"}, {"-w", "-wait"},    {"-wait", "-wait"}, {"-f", "-force"},
        {"-force", "-force"},     {"-help", "-help"}, {"-h", "-help"},    {"-H", "-help"},
        {"-output", "-output"},   {"-o", "-output"},  {"-x", "-examine"}, {"-z", "-z"},
        {"-zero", "-zero"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.word);
        const auto tokens = Framework::getInstance().tokenize(1, &row.word, commands);
        ASSERT_EQ(tokens.size(), 1U);
        EXPECT_EQ(tokens[0].text, row.text);
        EXPECT_EQ(tokens[0].tokenType, TokenType::Option);
    }
}

TEST_F(FrameworkTest, FoldsNothingButOptions) {
    // No command declares "-o" here; "-w" is a target, which wins over an option.
    CommandSpec spec(0, "Name", "-d", "");
    spec.addTarget("-w", OPTIONAL, "", VALUE_OPEN, "");
    spec.addProperty("-a", OPTIONAL, "", VALUE_OPEN, "");
    spec.addOption(OPTION_WAIT);
    const char* const words[] = {"-d", "-w", "-a", "-o", "x"};

    const auto tokens = Framework::getInstance().tokenize(5, words, {{spec, nullptr}});

    EXPECT_EQ(Framework::tokenArrayToString(tokens),
              "-d[Verb] -w[Target] -a[Property] -o[UNKNOWN] x[Value] ");
}

TEST_F(FrameworkTest, FoldsAShortNameByItsExactDeclaredSpelling) {
    CommandSpec spec(0, "Name", VERB_SHOW, "");
    spec.addOption("-own", OPTIONAL, "", VALUE_OPEN, "", "-O");
    const char* const words[] = {"-o"};

    const auto tokens = Framework::getInstance().tokenize(1, words, {{spec, nullptr}});

    EXPECT_EQ(Framework::tokenArrayToString(tokens), "-O[Option] ");
}

TEST_F(FrameworkTest, WritesTokensForTheLog) {
    const char* const words[] = {"show", "", "a b", "-x"};

    EXPECT_EQ(Framework::tokenArrayToString(4, words), "show  a b -x ");
    EXPECT_EQ(Framework::tokenArrayToString(0, nullptr), "");
    EXPECT_EQ(Framework::tokenArrayToString(
                  {{"show", TokenType::Verb}, {"=", TokenType::Equal}, {"", TokenType::Unknown}}),
              "show[Verb] =[Equal] [UNKNOWN] ");
    EXPECT_EQ(Framework::tokenArrayToString({}), "");
}

TEST_F(FrameworkTest, NamesTheListOfEachKindOfPart) {
    const CommandSpec spec = setMode();

    EXPECT_EQ(Framework::getCommandPart(TokenType::Option, spec), &spec.options);
    EXPECT_EQ(Framework::getCommandPart(TokenType::Target, spec), &spec.targets);
    EXPECT_EQ(Framework::getCommandPart(TokenType::Property, spec), &spec.properties);
    for (const auto type : {TokenType::Unknown, TokenType::Value, TokenType::Verb, TokenType::Equal,
                            TokenType::Comma, static_cast<TokenType>(9)}) {
        EXPECT_EQ(Framework::getCommandPart(type, spec), nullptr);
    }
}

TEST_F(FrameworkTest, DropsCommandsWithARequiredPartThatWasNotFound) {
    CommandRef found(showLog(), nullptr);
    found.targets[0].found = true;
    const std::vector<CommandRef> all = {
        {showDisk(), nullptr}, found, {setLimit(), nullptr}, {startFirst(), nullptr}};

    struct Row {
        TokenType type;
        Lines left;
    };

    const Row rows[] = {
        {TokenType::Target, {"ShowLog", "First"}},
        {TokenType::Property, {"ShowDisk", "ShowLog", "First"}},
        {TokenType::Option, {"ShowDisk", "ShowLog", "Limit", "First"}},
        {TokenType::Verb, {"ShowDisk", "ShowLog", "Limit", "First"}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(tokenTypeToString(row.type));
        auto commands = all;
        Framework::getInstance().filterIncompleteCommands(row.type, commands);
        Lines left;
        for (const CommandRef& command : commands)
            left.push_back(command.name);
        EXPECT_EQ(left, row.left);
    }
}

TEST_F(FrameworkTest, RunsTheOneCommandThatTheLineMeans) {
    struct Row {
        Lines line;
        std::string entry;
    };

    const Row rows[] = {
        {{"show", "-disk"}, "Fake runs ShowDisk of show"},
        {{"SHOW", "-DISK", "1"}, "Fake runs ShowDisk of show"},
        {{"show", "-a", "-disk", "1"}, "Fake runs ShowDisk of show"},
        {{"show", "-log"}, "Fake runs ShowLog of show"},
        {{"set", "-disk", "1", "Limit=0"}, "Fake runs Limit of set"},
        {{"set", "-f", "-disk", "1", "mode=x"}, "Fake runs Mode of set"},
        {{"load", "-source", "file", "-w", "-disk"}, "Fake runs Load of load"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(::testing::PrintToString(row.line));
        const auto result = execute(row.line);
        ASSERT_NE(result, nullptr);
        EXPECT_EQ(result->getErrorCode(), 0);
        ASSERT_FALSE(journal.empty()) << result->outputText();
        EXPECT_EQ(journal.front(), row.entry);
    }
}

TEST_F(FrameworkTest, RefusesWhatItCannotCarryOut) {
    const std::string invalid = "Syntax Error: Invalid command.\nDid you mean: \n";

    struct Row {
        Lines line;
        std::string text;
        std::int32_t code;
    };

    const Row rows[] = {
        // the parser refuses
        {{"-help"}, "Syntax Error: Invalid command. Error at or around '-help'.", 201},
        {{"bogus"}, "Syntax Error: Invalid command. Error at or around 'bogus'.", 201},
        {{"help", "show"},
         "Syntax Error: Invalid command. Error at or around 'show'.\nDid you mean: \n" +
             USAGE_HELP + "\n",
         201},
        {{"show", "-disk", "-disk"},
         "Syntax Error: Duplicate token found. The Target '-disk' was found more than once.",
         201},
        {{""},
         "Syntax Error: No Input.\nDid you mean: \n" + USAGE_SHOW_DISK + "\n" + USAGE_SHOW_LOG +
             "\n" + USAGE_LIMIT + "\n" + USAGE_MODE + "\n" + USAGE_LOAD + "\n" + USAGE_START +
             "\n" + USAGE_START + "\n" + USAGE_HELP + "\n",
         201},
        // nothing left: dropped from the last to the first, after sorting by second option
        {{"show"}, invalid + USAGE_SHOW_DISK + "\n" + USAGE_SHOW_LOG + "\n", 201},
        // nothing left of a help request: in the order collected, read from its end
        {{"show", "-h"}, invalid + USAGE_SHOW_LOG + "\n" + USAGE_SHOW_DISK + "\n", 201},
        {{"show", "-HELP"}, invalid + USAGE_SHOW_LOG + "\n" + USAGE_SHOW_DISK + "\n", 201},
        // a required property, a required option
        {{"set", "-disk", "1"}, invalid + USAGE_MODE + "\n" + USAGE_LIMIT + "\n", 201},
        {{"load", "-disk", "1"}, invalid + USAGE_LOAD + "\n", 201},
        // targets are checked first, then properties, then options
        {{"set", "Mode=x"}, invalid + USAGE_MODE + "\n", 201},
        // more than one left
        {{"start"}, MORE_THAN_ONE, 1},
        {{"start", "-help"}, MORE_THAN_ONE, 1},
        {{"set", "-h", "-disk"}, MORE_THAN_ONE, 1},
        // the shared options
        {{"show", "-a", "-d", "x", "-disk"},
         "Syntax Error: Options 'all' and 'display' cannot be used together.",
         201},
        {{"show", "-d", "-disk"},
         "Syntax Error: A value is required for the option 'display'.",
         201},
        {{"show", "-a", "1", "-disk"}, "Syntax Error: Option 'all' does not accept a value.", 201},
        {{"show", "-help", "yes", "-disk"},
         "Syntax Error: Option 'help' does not accept a value.",
         201},
        {{"show", "-o", "-disk"},
         "Syntax Error: Option 'output' expects 'text', 'nvmxml' or 'json'.",
         201},
        // the value rules of the declared parts
        {{"set", "-disk", "Limit=0"},
         "Syntax Error: A value is required for the target '-disk'.",
         201},
        {{"set", "-disk", "1", "Limit"},
         "Syntax Error: A value is required for the property 'Limit'.",
         201},
        {{"set", "-f", "yes", "-disk", "1", "Mode=x"},
         "Syntax Error: 'yes' is not a valid setting for the option '-force'.",
         201},
        {{"load", "-source", "-disk"},
         "Syntax Error: A value is required for the option '-source'.",
         201},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(::testing::PrintToString(row.line));
        const auto result = execute(row.line);
        ASSERT_NE(result, nullptr);
        EXPECT_EQ(result->outputText(), row.text);
        EXPECT_EQ(result->getErrorCode(), row.code);
        EXPECT_EQ(journal, Lines{});
    }
}

TEST_F(FrameworkTest, OffersOnlyTheCommandsThatThisLineDropped) {
    execute({"show"});

    EXPECT_EQ(execute({"load", "-disk", "1"})->outputText(),
              "Syntax Error: Invalid command.\nDid you mean: \n" + USAGE_LOAD + "\n");
    EXPECT_EQ(execute({"load", "-disk", "1"})->outputText(),
              "Syntax Error: Invalid command.\nDid you mean: \n" + USAGE_LOAD + "\n");
}

TEST_F(FrameworkTest, ShowsTheHelpOfTheCommandInPlaceOfRunningIt) {
    const Lines lines[] = {
        {"set", "-h", "-disk", "1", "Mode=x"},
        {"set", "-force", "-H", "-disk", "1"},
    };
    for (const Lines& line : lines) {
        SCOPED_TRACE(::testing::PrintToString(line));
        const auto result = execute(line);
        const auto* const help = dynamic_cast<const HelpResult*>(result.get());
        ASSERT_NE(help, nullptr) << result->outputText();
        EXPECT_EQ(help->getCount(), 1U);
        EXPECT_TRUE(help->getShowFull());
        EXPECT_NE(help->outputXml().find("<Command Name=\"Mode\">"), std::string::npos);
    }
    EXPECT_EQ(journal, Lines{});
}

TEST_F(FrameworkTest, HoldsAHelpRequestToTheValueRulesOfThePartsThatItNames) {
    EXPECT_EQ(execute({"set", "-help", "-disk", "1", "Mode"})->outputText(),
              "Syntax Error: A value is required for the property 'Mode'.");
}

TEST_F(FrameworkTest, AnswersALineWithoutWordsWithTheFullListInText) {
    LogCapture log;

    const auto result = execute({});

    const auto* const help = dynamic_cast<const HelpResult*>(result.get());
    ASSERT_NE(help, nullptr);
    EXPECT_EQ(help->getCount(), 8U);
    EXPECT_FALSE(help->getShowFull());
    EXPECT_EQ(result->getOutputType(), OutputType::text);
    EXPECT_EQ(log.text(), "");
}

TEST_F(FrameworkTest, GivesEveryResultTheOutputTypeOfTheLine) {
    struct Row {
        Lines line;
        OutputType type;
    };

    const Row rows[] = {
        {{"show", "-disk"}, OutputType::text},
        {{"show", "-o", "text", "-disk"}, OutputType::text},
        {{"show", "-o", "nvmxml", "-disk"}, OutputType::nvmxml},
        {{"show", "-o", "esx", "-disk"}, OutputType::esx},
        {{"show", "-output", "JSON", "-disk"}, OutputType::json},
        {{"help", "-o", "json"}, OutputType::json},
        {{"show", "-h", "-o", "json", "-disk"}, OutputType::json},
        // refusals: by the parser, by the shared options, by the value rules, and by the count
        {{"show", "-o", "json", "extra"}, OutputType::json},
        {{"show", "extra", "-o", "nvmxml"}, OutputType::nvmxml},
        {{"show", "extra", "-o", "json"}, OutputType::text},
        {{"show", "-o", "json", "-all", "1", "-disk"}, OutputType::json},
        {{"show", "-o", "csv", "-disk"}, OutputType::csv},
        {{"show", "-o", "pdf", "-disk"}, OutputType::text},
        {{"set", "-o", "esx", "-disk", "1", "Limit"}, OutputType::esx},
        {{"show", "-o", "json"}, OutputType::json},
        {{"start", "-o", "nvmxml"}, OutputType::nvmxml},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(::testing::PrintToString(row.line));
        EXPECT_EQ(execute(row.line)->getOutputType(), row.type);
    }
}

TEST_F(FrameworkTest, TakesHelpFromTheWordsAndNotFromTheTokens) {
    // "-h" behind an equals sign is a word of its own only among the tokens, so that the required
    // option still counts.
    EXPECT_EQ(execute({"show", "-h=1", "-disk"})->getErrorCode(), 201);
    CommandSpec spec(8, "Tag", VERB_CREATE, "");
    spec.addOption(OPTION_SOURCE_REQUIRED);
    spec.addProperty("Tag", OPTIONAL, "tag", VALUE_OPEN, "");
    Framework::getInstance().addFeature("Tag", feature("Tag", {spec}));

    EXPECT_EQ(execute({"create", "Tag=-h"})->outputText(),
              "Syntax Error: Invalid command.\nDid you mean: \n"
              "create -source (path) [-help|-h] [-output|-o (text|nvmxml|json)] [Tag = [(tag)]]\n");
}

TEST_F(FrameworkTest, ReportsACommandWithoutAFeature) {
    const auto result = Framework::runCommand(CommandRef(showDisk(), nullptr), Parser());

    EXPECT_EQ(result->outputText(), "Error: feature pointer was null - probably programmer error");
    EXPECT_EQ(result->getErrorCode(), 1);
}

TEST_F(FrameworkTest, TakesWordsAsAnArgumentVector) {
    Framework::getInstance().addFeature("Fake", feature("Fake", declaredCommands()));
    const char* const words[] = {"show", "-disk", "beyond the count"};

    EXPECT_EQ(Framework::getInstance().execute(2, words)->outputText(), "ran ShowDisk");
    EXPECT_NE(dynamic_cast<const HelpResult*>(Framework::getInstance().execute(0, words).get()),
              nullptr);
    EXPECT_NE(dynamic_cast<const HelpResult*>(Framework::getInstance().execute(-1, words).get()),
              nullptr);
}

/// Refuses every line in words of its own.
class RefusingFeature : public FakeFeature {
public:
    using FakeFeature::FakeFeature;

    std::unique_ptr<ResultBase> validate(const ParsedCommand& parsed) override {
        return std::make_unique<SimpleResult>("no " + parsed.verb);
    }
};

TEST_F(FrameworkTest, ReturnsTheRefusalOfTheFeature) {
    Framework::getInstance().addFeature(
        "Fake",
        std::make_unique<RefusingFeature>("Fake", journal, std::vector<CommandSpec>{setLimit()}));

    const auto result = Framework::getInstance().execute({"set", "-o", "json", "-disk", "Limit"});

    EXPECT_EQ(result->outputText(), "no set");
    EXPECT_EQ(result->getOutputType(), OutputType::json);
    EXPECT_EQ(journal, Lines{});
}

TEST_F(FrameworkTest, LogsTheRoadOfALine) {
    Framework::getInstance().addFeature("Fake", feature("Fake", {showDisk(), showLog()}));
    LogCapture log;

    Framework::getInstance().execute({"show", "-disk", "1"});

    EXPECT_EQ(log.text(), "2: Executing: show -disk 1 \n\n"
                          "2: Commands to consider: 3\n\n"
                          "2: Found verb: show\n\n"
                          "2: Found target: -disk\n\n"
                          "2: Tokenized input is: show[Verb] -disk[Target] 1[Value] \n\n"
                          "2: Filtering on verb: show\n\n"
                          "2: Removing: help [-help|-h] [-output|-o (text|nvmxml|json)] "
                          "[Name = (name)] [verb = (verb)]\n\n"
                          "2: Filtering on Target: -disk\n\n"
                          "2: Removing: show [-help|-h] [-output|-o (text|nvmxml|json)] -log\n\n"
                          "2: Commands left after Parser filtered: 1\n\n"
                          "2: Commands left after checking required targets: 1\n\n"
                          "2: Commands left after checking required properties: 1\n\n"
                          "2: Commands left after checking required options: 1\n\n"
                          "2: Executing: show [-all|-a] [-display|-d (Property1,...)] [-help|-h] "
                          "[-output|-o (text|nvmxml|json)] -disk [(index)]\n\n");
}

TEST_F(FrameworkTest, LogsWhyItDropsACommand) {
    Framework::getInstance().clearFeatureList();
    CommandSpec twoMissing = setLimit();
    twoMissing.addProperty("Second", REQUIRED, "", VALUE_OPEN, "");
    Framework::getInstance().addFeature("Fake", feature("Fake", {twoMissing}));
    LogCapture log;

    Framework::getInstance().execute({"set", "-disk"});

    EXPECT_EQ(log.text(), "2: Executing: set -disk \n\n"
                          "2: Commands to consider: 1\n\n"
                          "2: Found verb: set\n\n"
                          "2: Found target: -disk\n\n"
                          "2: Tokenized input is: set[Verb] -disk[Target] \n\n"
                          "2: Filtering on verb: set\n\n"
                          "2: Filtering on Target: -disk\n\n"
                          "2: Commands left after Parser filtered: 1\n\n"
                          "2: Commands left after checking required targets: 1\n\n"
                          "2: Property 'Limit' required, but not found?\n\n"
                          "2: Removing: set [-help|-h] [-output|-o (text|nvmxml|json)] "
                          "-disk (index) Limit = (0|1) Second\n\n"
                          "2: Commands left after checking required properties: 0\n\n"
                          "2: Commands left after checking required options: 0\n\n");
}

TEST_F(FrameworkTest, LogsConflictingCommands) {
    Framework::getInstance().clearFeatureList();
    Framework::getInstance().addFeature("Fake", feature("Fake", {startFirst(), startSecond()}));
    LogCapture log;

    Framework::getInstance().execute({"start", "-h"});

    EXPECT_EQ(log.text(), "2: Executing: start -h \n\n"
                          "2: Commands to consider: 2\n\n"
                          "2: Found verb: start\n\n"
                          "2: Found option: -h\n\n"
                          "2: Tokenized input is: start[Verb] -help[Option] \n\n"
                          "2: Filtering on verb: start\n\n"
                          "2: Commands left after Parser filtered: 2\n\n"
                          "2: The conflicting commands are: "
                          "\"start [-help|-h] [-output|-o (text|nvmxml|json)]\" "
                          "\"start [-help|-h] [-output|-o (text|nvmxml|json)]\" \n\n");
}

TEST_F(FrameworkTest, LogsThatHelpSkipsTheChecks) {
    Framework::getInstance().clearFeatureList();
    Framework::getInstance().addFeature("Fake", feature("Fake", {setLimit()}));
    LogCapture log;

    Framework::getInstance().execute({"set", "-h"});

    EXPECT_EQ(log.text(),
              "2: Executing: set -h \n\n"
              "2: Commands to consider: 1\n\n"
              "2: Found verb: set\n\n"
              "2: Found option: -h\n\n"
              "2: Tokenized input is: set[Verb] -help[Option] \n\n"
              "2: Filtering on verb: set\n\n"
              "2: Commands left after Parser filtered: 1\n\n"
              "2: Command filtering check skipped due to help option: \n\n"
              "2: Executing: set [-help|-h] [-output|-o (text|nvmxml|json)] -disk (index) "
              "Limit = (0|1)\n\n");
}

}  // namespace
}  // namespace cli::framework
