// How a line is accepted or refused, what it amounts to, and which commands it leaves.
#include "interfaces/cli/cliframework/Parser.h"

#include "interfaces/cli/cliframework/DuplicateTokenErrorResult.h"
#include "interfaces/cli/cliframework/FeatureBase.h"
#include "interfaces/cli/cliframework/Lexer.h"
#include "interfaces/cli/cliframework/NoInputErrorResult.h"
#include "interfaces/cli/cliframework/ParseErrorResult.h"
#include "interfaces/cli/cliframework/SyntaxErrorBadValueResult.h"
#include "interfaces/cli/cliframework/SyntaxErrorMissingValueResult.h"
#include "tests/interfaces/cli/cliframework/CapturedLog.h"

#include <gtest/gtest.h>

namespace cli::framework {
namespace {

using Words = std::vector<std::string>;
using Values = std::map<std::string, std::string>;

// The sample commands, in list order, as their usage lines read.
const char* const SHOW_DRIVE = "show [-display|-d (Property1,...)] [-all|-a] -norvossd [(index)]";
const char* const SHOW_SYSTEM = "show [-display|-d (Property1,...)] -system";
const char* const SET_DRIVE = "set [-force|-f] -norvossd (index) MaximumLBA = (native)";
const char* const SET_LOG = "set -system EnableLog = ('true'|'false')";
const char* const SET_X = "set X = (x)";
const char* const HELP = "help [verb = (verb)] [Name = (name)]";
const char* const VERSION = "version";

std::vector<CommandRef> sampleCommands() {
    CommandSpec showDrive(0, "Drive", "show", "");
    showDrive.addOption(OPTION_DISPLAY);
    showDrive.addOption(OPTION_ALL);
    showDrive.addTarget("-norvossd", true, "index", false, "");

    CommandSpec showSystem(0, "System", "show", "");
    showSystem.addOption(OPTION_DISPLAY);
    showSystem.addTarget("-system", true, "", false, "");

    CommandSpec setDrive(1, "MaximumLBA", "set", "");
    setDrive.addOption(OPTION_FORCE);
    setDrive.addTarget("-norvossd", true, "index", true, "");
    setDrive.addProperty("MaximumLBA", true, "native", true, "");

    CommandSpec setLog(1, "EnableLog", "set", "");
    setLog.addTarget("-system", true, "", false, "");
    setLog.addProperty("EnableLog", true, "'true'|'false'", true, "");

    CommandSpec setX(2, "X", "set", "");
    setX.addProperty("X", true, "x", true, "");

    CommandSpec help(0, "Help", "help", "");
    help.addProperty(PROPERTY_VERB);
    help.addProperty(PROPERTY_NAME);

    const CommandSpec version(0, "Version", "version", "");

    std::vector<CommandRef> commands;
    for (const CommandSpec& spec : {showDrive, showSystem, setDrive, setLog, setX, help, version}) {
        commands.emplace_back(spec, nullptr);
    }
    return commands;
}

/// The tokens of a line given as words, with the short options made long.
std::vector<Token> tokensOf(const Words& words) {
    const Lexer lexer(
        {"show", "set", "help", "version"}, {"-norvossd", "-system"},
        {"-display", "-d", "-all", "-a", "-force", "-f", "-wait", "-w", "-output", "-o", "-help"},
        {"EnableLog", "MaximumLBA", "X", "verb", "Name"});
    const Values longNames = {
        {"-d", "-display"}, {"-a", "-all"}, {"-f", "-force"}, {"-w", "-wait"}, {"-o", "-output"}};
    std::vector<Token> tokens = lexer.tokenize(words);
    for (Token& token : tokens) {
        if (token.tokenType != TokenType::Option) continue;
        const auto entry = longNames.find(token.text);
        if (entry != longNames.end()) token.text = entry->second;
    }
    return tokens;
}

Words usageLines(const std::vector<CommandRef>& commands) {
    Words lines;
    for (const CommandRef& command : commands) {
        lines.push_back(command.asStr());
    }
    return lines;
}

std::string refusalOf(const std::string& message, const Words& potentialCommands) {
    std::string text = "Syntax Error: " + message;
    if (!potentialCommands.empty()) text += "\nDid you mean: \n";
    for (const std::string& line : potentialCommands) {
        text += line + "\n";
    }
    return text;
}

std::string errorAt(const std::string& token) {
    return "Invalid command. Error at or around '" + token + "'.";
}

class IdleFeature : public FeatureBase {
public:
    std::unique_ptr<ResultBase> run(const CommandSpec&, const ParsedCommand&) override {
        return nullptr;
    }

    void getPaths(std::vector<CommandSpec>&) override {}
};

class ParserTest : public ::testing::Test {
protected:
    std::unique_ptr<SyntaxErrorResult> parse(const Words& words) {
        return parser.parse(tokensOf(words), &commands);
    }

    void expectRefusal(const Words& words, const std::string& message,
                       const Words& potentialCommands) {
        SCOPED_TRACE(::testing::PrintToString(words));
        commands = sampleCommands();
        const auto result = parse(words);
        ASSERT_NE(nullptr, result);
        EXPECT_EQ(201, result->getErrorCode());
        EXPECT_EQ(refusalOf(message, potentialCommands), result->outputText());
    }

    Parser parser;
    std::vector<CommandRef> commands = sampleCommands();
};

TEST_F(ParserTest, AcceptsLinesOfItsGrammar) {
    struct Row {
        Words words;
        const char* verb;
        Values options;
        Values targets;
        Values properties;
        Words commandsLeft;
    };

    const Row rows[] = {
        {{"version"}, "version", {}, {}, {}, {VERSION}},
        {{"show"}, "show", {}, {}, {}, {SHOW_DRIVE, SHOW_SYSTEM}},
        {{"show", "-norvossd", "0"}, "show", {}, {{"-norvossd", "0"}}, {}, {SHOW_DRIVE}},
        {{"show", "-display", "Firmware,Index", "-norvossd", "0"},
         "show",
         {{"-display", "Firmware,Index"}},
         {{"-norvossd", "0"}},
         {},
         {SHOW_DRIVE}},
        {{"show", "-o", "nvmxml", "-a", "-norvossd"},
         "show",
         {{"-all", ""}, {"-output", "nvmxml"}},
         {{"-norvossd", ""}},
         {},
         {SHOW_DRIVE}},
        {{"set", "-system", "EnableLog=true"},
         "set",
         {},
         {{"-system", ""}},
         {{"EnableLog", "true"}},
         {SET_LOG}},
        {{"set", "-norvossd", "0", "MaximumLBA=native"},
         "set",
         {},
         {{"-norvossd", "0"}},
         {{"MaximumLBA", "native"}},
         {SET_DRIVE}},
        {{"help", "Name=firmware"}, "help", {}, {}, {{"Name", "firmware"}}, {HELP}},
        {{"help", "verb=show"}, "help", {}, {}, {{"verb", "show"}}, {HELP}},
        {{"help", "verb=show", "Name=a"},
         "help",
         {},
         {},
         {{"Name", "a"}, {"verb", "show"}},
         {HELP}},
        // a property without an equals sign
        {{"set", "-system", "EnableLog"},
         "set",
         {},
         {{"-system", ""}},
         {{"EnableLog", ""}},
         {SET_LOG}},
        {{"help", "verb", "Name"}, "help", {}, {}, {{"Name", ""}, {"verb", ""}}, {HELP}},
        {{"help", "Name", "=", "a"}, "help", {}, {}, {{"Name", "a"}}, {HELP}},
        // values cut at their commas come back whole
        {{"show", "-d", "a,b,c", "-all", "-norvossd"},
         "show",
         {{"-all", ""}, {"-display", "a,b,c"}},
         {{"-norvossd", ""}},
         {},
         {SHOW_DRIVE}},
        {{"show", "-norvossd", "0,1,2"}, "show", {}, {{"-norvossd", "0,1,2"}}, {}, {SHOW_DRIVE}},
        {{"show", "-norvossd", "0", ",", "1"},
         "show",
         {},
         {{"-norvossd", "0,1"}},
         {},
         {SHOW_DRIVE}},
        // a property as a value
        {{"show", "-d", "Name", "-norvossd"},
         "show",
         {{"-display", "Name"}},
         {{"-norvossd", ""}},
         {},
         {SHOW_DRIVE}},
        {{"show", "-d", "a,NAME,X", "-norvossd"},
         "show",
         {{"-display", "a,Name,X"}},
         {{"-norvossd", ""}},
         {},
         {SHOW_DRIVE}},
        {{"show", "-norvossd", "0,Name"}, "show", {}, {{"-norvossd", "0,Name"}}, {}, {SHOW_DRIVE}},
        // the first property behind an option is its value, the second is a property
        {{"set", "-force", "MaximumLBA", "MaximumLBA=1"},
         "set",
         {{"-force", "MaximumLBA"}},
         {},
         {{"MaximumLBA", "1"}},
         {SET_DRIVE}},
        // a comma that ends the line is dropped
        {{"show", "-d", "a,"}, "show", {{"-display", "a"}}, {}, {}, {SHOW_DRIVE, SHOW_SYSTEM}},
        {{"show", "-norvossd", "0,"}, "show", {}, {{"-norvossd", "0"}}, {}, {SHOW_DRIVE}},
        // anything but "=" and "," after an equals sign
        {{"set", "X=-1"}, "set", {}, {}, {{"X", "-1"}}, {SET_X}},
        {{"set", "X=show"}, "set", {}, {}, {{"X", "show"}}, {SET_X}},
        {{"set", "X=-all"}, "set", {}, {}, {{"X", "-all"}}, {SET_X}},
        {{"set", "X=-system"}, "set", {}, {}, {{"X", "-system"}}, {SET_X}},
        {{"set", "X=Name"}, "set", {}, {}, {{"X", "Name"}}, {SET_X}},
        {{"set", "X=b=c"}, "set", {}, {}, {{"X", "b=c"}}, {SET_X}},
        // options that every command has
        {{"version", "-help"}, "version", {{"-help", ""}}, {}, {}, {VERSION}},
        {{"version", "-help", "a"}, "version", {{"-help", "a"}}, {}, {}, {VERSION}},
        {{"version", "-output"}, "version", {{"-output", ""}}, {}, {}, {VERSION}},
        {{"version", "-o", "json"}, "version", {{"-output", "json"}}, {}, {}, {VERSION}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(::testing::PrintToString(row.words));
        commands = sampleCommands();
        EXPECT_EQ(nullptr, parse(row.words));
        const ParsedCommand parsed = parser.getParsedCommand();
        EXPECT_EQ(row.verb, parsed.verb);
        EXPECT_EQ(row.options, parsed.options);
        EXPECT_EQ(row.targets, parsed.targets);
        EXPECT_EQ(row.properties, parsed.properties);
        EXPECT_EQ(row.commandsLeft, usageLines(commands));
    }
}

TEST_F(ParserTest, RefusesTheSampleLines) {
    expectRefusal({"-help"}, errorAt("-help"), {});
    expectRefusal({"show", "extra"}, errorAt("extra"), {SHOW_SYSTEM, SHOW_DRIVE});
    expectRefusal({"show", "-norvossd", "0", "-o", "json"}, errorAt("-output"), {SHOW_DRIVE});
    expectRefusal({"set", "-norvossd", "0", "1"}, errorAt("1"), {SET_DRIVE});
    expectRefusal({"set", "-system", "EnableLog="}, errorAt("="), {SET_LOG});
    expectRefusal({"set", "-system", "EnableLog=a,b"}, errorAt(","), {SET_LOG});
    expectRefusal({"set", "-force", "EnableLog=true"}, errorAt("="), {SET_X, SET_LOG, SET_DRIVE});
    expectRefusal({"show", "-d", "a,b,", "-norvossd", "0"}, errorAt("-norvossd"),
                  {SHOW_SYSTEM, SHOW_DRIVE});
    expectRefusal({"show", "-norvossd", "-norvossd"},
                  "Duplicate token found. The Target '-norvossd' was found more than once.", {});
    expectRefusal({"show", "-all=1", "-norvossd"}, errorAt("="), {SHOW_SYSTEM, SHOW_DRIVE});
    expectRefusal({"show", "-display", "show"}, errorAt("show"), {SHOW_SYSTEM, SHOW_DRIVE});
}

TEST_F(ParserTest, RefusesEachTokenWithoutAPlaceAfterTheVerb) {
    for (const char* token : {"extra", "-bogus", "help", "=", ","}) {
        expectRefusal({"show", token}, errorAt(token), {SHOW_SYSTEM, SHOW_DRIVE});
    }
}

TEST_F(ParserTest, RefusesEachTokenWithoutAPlaceAfterAnOption) {
    for (const char* token : {"-bogus", "-1", "help", "=", ","}) {
        expectRefusal({"show", "-d", token}, errorAt(token), {SHOW_SYSTEM, SHOW_DRIVE});
    }
}

TEST_F(ParserTest, RefusesEachTokenWithoutAPlaceAfterAnOptionsValue) {
    for (const char* token : {"b", "-bogus", "-1", "help", "="}) {
        expectRefusal({"show", "-d", "a", token}, errorAt(token), {SHOW_SYSTEM, SHOW_DRIVE});
    }
}

TEST_F(ParserTest, RefusesEachTokenWithoutAPlaceAfterATarget) {
    for (const char* token : {"-all", "-bogus", "-1", "help", "=", ","}) {
        expectRefusal({"show", "-norvossd", token}, errorAt(token), {SHOW_DRIVE});
    }
}

TEST_F(ParserTest, RefusesEachTokenWithoutAPlaceAfterATargetsValue) {
    for (const char* token : {"1", "-all", "-bogus", "-1", "help", "="}) {
        expectRefusal({"show", "-norvossd", "0", token}, errorAt(token), {SHOW_DRIVE});
    }
}

TEST_F(ParserTest, RefusesEachTokenWithoutAPlaceAfterAComma) {
    for (const char* token : {"-norvossd", "-all", "-bogus", "-1", "help", "=", ","}) {
        expectRefusal({"show", "-d", "a,", token}, errorAt(token), {SHOW_SYSTEM, SHOW_DRIVE});
        expectRefusal({"show", "-norvossd", "0,", token}, errorAt(token), {SHOW_DRIVE});
    }
}

TEST_F(ParserTest, RefusesEachTokenWithoutAPlaceAfterAProperty) {
    for (const char* token : {"1", "-all", "-system", "-bogus", "-1", "help", ","}) {
        expectRefusal({"set", "X", token}, errorAt(token), {SET_X});
    }
}

TEST_F(ParserTest, RefusesAMissingValueAndASeparatorAfterAnEqualsSign) {
    expectRefusal({"set", "X="}, errorAt("="), {SET_X});
    expectRefusal({"set", "X=="}, errorAt("="), {SET_X});
    expectRefusal({"set", "X=,a"}, errorAt(","), {SET_X});
}

TEST_F(ParserTest, RefusesEachTokenWithoutAPlaceAfterAPropertysValue) {
    for (const char* token : {"2", "-all", "-system", "-bogus", "-1", "help", "=", ","}) {
        expectRefusal({"set", "X=1", token}, errorAt(token), {SET_X});
    }
}

TEST_F(ParserTest, OffersAllCommandsInListOrderForALineWithoutTokens) {
    for (const Words& words : {Words{}, Words{""}}) {
        expectRefusal(words, "No Input.",
                      {SHOW_DRIVE, SHOW_SYSTEM, SET_DRIVE, SET_LOG, SET_X, HELP, VERSION});
        EXPECT_EQ(7U, commands.size());
    }
}

TEST_F(ParserTest, OffersNothingAndErasesNothingIfTheFirstTokenIsNoVerb) {
    for (const char* token : {"-help", "bogus", "-bogus", "-norvossd", "Name", "=", ","}) {
        expectRefusal({token, "show"}, errorAt(token), {});
        EXPECT_EQ(7U, commands.size());
        EXPECT_EQ("", parser.getParsedCommand().verb);
    }
}

TEST_F(ParserTest, OffersTheCommandsLeftBeforeARefusedToken) {
    expectRefusal({"set", "extra"}, errorAt("extra"), {SET_X, SET_LOG, SET_DRIVE});
    EXPECT_TRUE(commands.empty());
}

TEST_F(ParserTest, OffersTheCommandsThatATargetOrPropertyRemoved) {
    expectRefusal({"version", "-system"}, errorAt("-system"), {VERSION});
    expectRefusal({"show", "-norvossd", "-system"}, errorAt("-system"), {SHOW_DRIVE});
    expectRefusal({"show", "Name=a"}, errorAt("Name"), {SHOW_SYSTEM, SHOW_DRIVE});
    expectRefusal({"set", "-norvossd", "0", "EnableLog=true"}, errorAt("EnableLog"), {SET_DRIVE});
    EXPECT_TRUE(commands.empty());
}

TEST_F(ParserTest, OffersTheCommandsThatAnOptionRemoved) {
    expectRefusal({"show", "-force"}, errorAt("-force"), {SHOW_SYSTEM, SHOW_DRIVE});
    expectRefusal({"show", "-force", "-norvossd"}, errorAt("-force"), {SHOW_DRIVE});
    EXPECT_TRUE(commands.empty());
}

TEST_F(ParserTest, FiltersOptionsInSortedOrderAfterTheWalk) {
    expectRefusal({"show", "-wait", "-force"}, errorAt("-force"), {SHOW_SYSTEM, SHOW_DRIVE});
    expectRefusal({"show", "-force", "-all"}, errorAt("-force"), {SHOW_DRIVE});
    // The walk refuses "extra" before "-force" is looked at.
    expectRefusal({"show", "-force", "-norvossd", "0", "extra"}, errorAt("extra"), {SHOW_DRIVE});
}

TEST_F(ParserTest, OffersNothingAndKeepsTheCommandsForADuplicateOptionOrTarget) {
    expectRefusal({"show", "-all", "-d", "x", "-a", "-norvossd"},
                  "Duplicate token found. The Option '-all' was found more than once.", {});
    EXPECT_EQ((Words{SHOW_DRIVE, SHOW_SYSTEM}), usageLines(commands));
    expectRefusal({"show", "-output", "json", "-o", "json"},
                  "Duplicate token found. The Option '-output' was found more than once.", {});
    expectRefusal({"show", "-norvossd", "0", "-norvossd", "1"},
                  "Duplicate token found. The Target '-norvossd' was found more than once.", {});
    EXPECT_EQ((Words{SHOW_DRIVE}), usageLines(commands));
}

TEST_F(ParserTest, OffersTheCommandsLeftForADuplicateProperty) {
    expectRefusal({"set", "X=1", "X=2"},
                  "Duplicate token found. The Property 'X' was found more than once.", {SET_X});
    EXPECT_TRUE(commands.empty());
}

TEST_F(ParserTest, MakesAResultOfTheClassThatTheFailureHas) {
    EXPECT_NE(nullptr, dynamic_cast<NoInputErrorResult*>(parse({}).get()));
    EXPECT_NE(nullptr, dynamic_cast<ParseErrorResult*>(parse({"bogus"}).get()));
    EXPECT_NE(nullptr, dynamic_cast<ParseErrorResult*>(parse({"show", "extra"}).get()));
    EXPECT_NE(nullptr, dynamic_cast<DuplicateTokenErrorResult*>(parse({"set", "-a", "-a"}).get()));
}

TEST_F(ParserTest, RefusesAVerbsPartsIfNoCommandHasTheVerb) {
    commands.erase(commands.begin(), commands.begin() + 2);
    const auto result = parse({"show", "-norvossd"});
    ASSERT_NE(nullptr, result);
    EXPECT_EQ("Syntax Error: Invalid command. Error at or around '-norvossd'.",
              result->outputText());
}

TEST_F(ParserTest, MarksThePartsThatTheLineNames) {
    commands[0].options[0].name = "-DISPLAY";
    ASSERT_EQ(nullptr, parse({"show", "-d", "a", "-norvossd"}));
    ASSERT_EQ(1U, commands.size());
    EXPECT_TRUE(commands[0].options[0].found);
    EXPECT_FALSE(commands[0].options[1].found);
    EXPECT_TRUE(commands[0].targets[0].found);
}

TEST_F(ParserTest, NeverFiltersOnHelpAndOutput) {
    commands[6].addOption(OPTION_HELP);
    ASSERT_EQ(nullptr, parse({"version", "-help", "-o", "json"}));
    ASSERT_EQ(1U, commands.size());
    EXPECT_FALSE(commands[0].options[0].found);
}

TEST_F(ParserTest, KeepsTheFeatureOfACommand) {
    IdleFeature owner;
    commands[6].feature = &owner;
    ASSERT_EQ(nullptr, parse({"version"}));
    ASSERT_EQ(1U, commands.size());
    EXPECT_EQ(&owner, commands[0].feature);
}

TEST_F(ParserTest, WorksWithoutCommands) {
    EXPECT_EQ(nullptr, parser.parse(tokensOf({"show", "-force", "-norvossd", "X=1"}), nullptr));
    EXPECT_EQ((Values{{"-force", ""}}), parser.getParsedCommand().options);

    const Words refused[] = {{}, {"bogus"}, {"show", "extra"}, {"set", "X=1", "X=2"}};
    const char* const messages[] = {
        "Syntax Error: No Input.", "Syntax Error: Invalid command. Error at or around 'bogus'.",
        "Syntax Error: Invalid command. Error at or around 'extra'.",
        "Syntax Error: Duplicate token found. The Property 'X' was found more than once."};
    for (std::size_t row = 0; row < std::size(refused); ++row) {
        SCOPED_TRACE(messages[row]);
        const auto result = parser.parse(tokensOf(refused[row]), nullptr);
        ASSERT_NE(nullptr, result);
        EXPECT_EQ(messages[row], result->outputText());
    }
}

TEST_F(ParserTest, StartsEachLineCleared) {
    ASSERT_NE(nullptr, parse({"show", "-d", "a", "-norvossd", "0", "extra"}));
    commands = sampleCommands();
    ASSERT_EQ(nullptr, parse({"version"}));
    const ParsedCommand parsed = parser.getParsedCommand();
    EXPECT_EQ("version", parsed.verb);
    EXPECT_EQ(Values{}, parsed.options);
    EXPECT_EQ(Values{}, parsed.targets);
    EXPECT_EQ(Values{}, parsed.properties);
}

TEST_F(ParserTest, StaysReadableAfterAFailure) {
    ASSERT_NE(nullptr, parse({"set", "-force", "a", "-norvossd", "0", "MaximumLBA=1", "extra"}));
    const ParsedCommand parsed = parser.getParsedCommand();
    EXPECT_EQ("set", parsed.verb);
    EXPECT_EQ((Values{{"-force", "a"}, {"-output", ""}}), parsed.options);
    EXPECT_EQ((Values{{"-norvossd", "0"}}), parsed.targets);
    EXPECT_EQ((Values{{"MaximumLBA", "1"}}), parsed.properties);
    parser.initialize();
    EXPECT_EQ("", parser.getParsedCommand().verb);
    EXPECT_EQ(Values{}, parser.getParsedCommand().options);
}

TEST_F(ParserTest, LooksForNvmxmlAloneAfterAnError) {
    struct Row {
        Words words;
        const char* output;
    };

    const Row rows[] = {
        // the walk reached the option
        {{"show", "-o", "nvmxml", "extra"}, "nvmxml"},
        {{"show", "-o", "NVMXML", "extra"}, "NVMXML"},
        {{"show", "-o", "json", "extra"}, "json"},
        {{"show", "-o", "json", "extra", "-o", "nvmxml"}, "json"},
        // the option stands behind the error
        {{"show", "extra", "-o", "nvmxml"}, "nvmxml"},
        {{"show", "extra", "-output", "NvmXML"}, "nvmxml"},
        {{"show", "extra", "-o", "json"}, ""},
        {{"show", "extra", "-o", "esx"}, ""},
        {{"show", "extra", "-o"}, ""},
        {{"show", "extra"}, ""},
        {{"show", "extra", "-o", "json", "-o", "nvmxml"}, "nvmxml"},
        {{"show", "extra", "-o", "nvmxml", "-o", "json"}, "nvmxml"},
        {{"show", "extra", "-all", "nvmxml"}, ""},
        {{"show", "extra", "-bogus", "nvmxml"}, ""},
        // refusals of other kinds
        {{"-o", "nvmxml"}, "nvmxml"},
        {{"bogus", "-o", "nvmxml"}, "nvmxml"},
        {{}, ""},
        {{"show", "-a", "-a", "-o", "nvmxml"}, "nvmxml"},
        {{"show", "-norvossd", "0", "-o", "nvmxml"}, "nvmxml"},
        {{"show", "-force", "-norvossd"}, ""},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(::testing::PrintToString(row.words));
        commands = sampleCommands();
        ASSERT_NE(nullptr, parse(row.words));
        const Values options = parser.getParsedCommand().options;
        ASSERT_EQ(1U, options.count("-output"));
        EXPECT_EQ(row.output, options.at("-output"));
    }
}

TEST_F(ParserTest, TakesTheShortOutputOptionAsItStandsInTheTokens) {
    struct Row {
        Token option;
        const char* output;
    };

    const Row rows[] = {
        {{"-o", TokenType::Option}, "nvmxml"}, {{"-output", TokenType::Option}, "nvmxml"},
        {{"-O", TokenType::Option}, ""},       {{"-out", TokenType::Option}, ""},
        {{"-output", TokenType::Unknown}, ""},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.option.text);
        ASSERT_NE(nullptr, parser.parse({row.option, {"nvmxml", TokenType::Value}}, &commands));
        EXPECT_EQ(row.output, parser.getParsedCommand().options.at("-output"));
    }
}

TEST_F(ParserTest, LeavesTheOutputOptionOutOfAWellFormedLine) {
    ASSERT_EQ(nullptr, parse({"show", "-norvossd"}));
    EXPECT_EQ(0U, parser.getParsedCommand().options.count("-output"));
}

TEST_F(ParserTest, LooksValuesUpByExactName) {
    ParsedCommand parsed;
    parsed.options = {{"-display", "a,b"}, {"-all", ""}};
    parsed.targets = {{"-norvossd", "0"}};
    parsed.properties = {{"Name", "x"}};
    bool found = false;
    EXPECT_EQ("a,b", Parser::getOptionValue(parsed, "-display", &found));
    EXPECT_TRUE(found);
    EXPECT_EQ("", Parser::getOptionValue(parsed, "-DISPLAY", &found));
    EXPECT_FALSE(found);
    EXPECT_EQ("", Parser::getOptionValue(parsed, "-all", &found));
    EXPECT_TRUE(found);
    EXPECT_EQ("a,b", Parser::getOptionValue(parsed, "-display"));

    EXPECT_EQ("0", Parser::getTargetValue(parsed, "-norvossd", &found));
    EXPECT_TRUE(found);
    EXPECT_EQ("", Parser::getTargetValue(parsed, "-display", &found));
    EXPECT_FALSE(found);
    EXPECT_EQ("0", Parser::getTargetValue(parsed, "-norvossd"));

    EXPECT_EQ("x", Parser::getPropertyValue(parsed, "Name", &found));
    EXPECT_TRUE(found);
    EXPECT_EQ("", Parser::getPropertyValue(parsed, "name", &found));
    EXPECT_FALSE(found);
    EXPECT_EQ("x", Parser::getPropertyValue(parsed, "Name"));
}

TEST_F(ParserTest, CutsTheValueOfATargetAtItsCommas) {
    ParsedCommand parsed;
    parsed.targets = {{"-norvossd", "0, 1\t,a b"}, {"-system", ""}, {"-blank", " , "}};
    bool found = false;
    EXPECT_EQ((Words{"0", "1", "a b"}), Parser::getTargetValues(parsed, "-norvossd", &found));
    EXPECT_TRUE(found);
    EXPECT_EQ((Words{}), Parser::getTargetValues(parsed, "-system", &found));
    EXPECT_TRUE(found);
    EXPECT_EQ((Words{}), Parser::getTargetValues(parsed, "-absent", &found));
    EXPECT_FALSE(found);
    EXPECT_EQ((Words{}), Parser::getTargetValues(parsed, "-blank"));
}

class ParserValueCheck : public ParserTest {
protected:
    ParserValueCheck() : command(0, "Sample", "set", "") {
        command.addOption(OPTION_DISPLAY);
        command.addOption(OPTION_FORCE);
        command.addOption(OPTION_OUTPUT);
        command.addTarget("-norvossd", false, "index", true, "");
        command.addTarget("-system", false, "", false, "").noValue = true;
        command.addProperty("EnableLog", false, "x", true, "");
        command.addProperty("X", false, "x", false, "");
        command.addProperty("Name", false, "", false, "").noValue = true;
    }

    /// The refusal's text for a line of these words; empty if the values are in order.
    std::string check(const Words& words) {
        EXPECT_EQ(nullptr, parser.parse(tokensOf(words), nullptr));
        const auto result = parser.checkParsedCommand(command);
        return result ? result->outputText() : std::string();
    }

    CommandSpec command;
};

TEST_F(ParserValueCheck, LetsValuesInOrderPass) {
    EXPECT_EQ("", check({"set"}));
    EXPECT_EQ("", check({"set", "-d", "a", "-f", "-o", "json", "-norvossd", "0", "-system",
                         "EnableLog=1", "X=2", "Name"}));
    EXPECT_EQ("", check({"set", "X"}));
}

TEST_F(ParserValueCheck, RefusesAMissingValue) {
    EXPECT_EQ("Syntax Error: A value is required for the option '-display'.", check({"set", "-d"}));
    EXPECT_EQ("Syntax Error: A value is required for the option '-output'.", check({"set", "-o"}));
    EXPECT_EQ("Syntax Error: A value is required for the target '-norvossd'.",
              check({"set", "-norvossd"}));
    EXPECT_EQ("Syntax Error: A value is required for the property 'EnableLog'.",
              check({"set", "-system", "EnableLog"}));
}

TEST_F(ParserValueCheck, RefusesAValueForAPartThatTakesNone) {
    EXPECT_EQ("Syntax Error: 'a,b' is not a valid setting for the option '-force'.",
              check({"set", "-f", "a,b"}));
    EXPECT_EQ("Syntax Error: '1' is not a valid setting for the target '-system'.",
              check({"set", "-system", "1"}));
    EXPECT_EQ("Syntax Error: 'y' is not a valid setting for the property 'Name'.",
              check({"set", "Name=y"}));
}

TEST_F(ParserValueCheck, EndsAtTheFirstRefusal) {
    // Options, then targets, then properties, each in declared order.
    EXPECT_EQ("Syntax Error: A value is required for the option '-display'.",
              check({"set", "-f", "a", "-d", "-norvossd", "EnableLog"}));
    EXPECT_EQ("Syntax Error: 'a' is not a valid setting for the option '-force'.",
              check({"set", "-f", "a", "-norvossd", "EnableLog"}));
    EXPECT_EQ("Syntax Error: A value is required for the target '-norvossd'.",
              check({"set", "-system", "1", "-norvossd", "EnableLog"}));
    EXPECT_EQ("Syntax Error: A value is required for the property 'EnableLog'.",
              check({"set", "Name=y", "EnableLog"}));
}

TEST_F(ParserValueCheck, MakesResultsOfTheirClassesWithCode201) {
    ASSERT_EQ(nullptr, parser.parse(tokensOf({"set", "-d"}), nullptr));
    const auto missing = parser.checkParsedCommand(command);
    EXPECT_NE(nullptr, dynamic_cast<SyntaxErrorMissingValueResult*>(missing.get()));
    EXPECT_EQ(201, missing->getErrorCode());
    ASSERT_EQ(nullptr, parser.parse(tokensOf({"set", "-f", "a"}), nullptr));
    const auto bad = parser.checkParsedCommand(command);
    EXPECT_NE(nullptr, dynamic_cast<SyntaxErrorBadValueResult*>(bad.get()));
    EXPECT_EQ(201, bad->getErrorCode());
}

TEST_F(ParserValueCheck, PassesPartsThatTheCommandDoesNotDeclare) {
    EXPECT_EQ("", check({"set", "-wait", "a"}));
}

TEST_F(ParserTest, FiltersOnAVerbWithoutCase) {
    ASSERT_EQ(nullptr, parser.parse({{"SHOW", TokenType::Verb}}, &commands));
    EXPECT_EQ("SHOW", parser.getParsedCommand().verb);
    EXPECT_EQ((Words{SHOW_DRIVE, SHOW_SYSTEM}), usageLines(commands));
    parser.filterOnVerb("version");
    EXPECT_TRUE(commands.empty());
}

TEST_F(ParserTest, FiltersOnEachKindOfPartWithoutCase) {
    ASSERT_EQ(nullptr, parse({"set"}));
    EXPECT_TRUE(parser.filterOn({"-NORVOSSD", TokenType::Target}));
    EXPECT_EQ((Words{SET_DRIVE}), usageLines(commands));
    EXPECT_TRUE(parser.filterOn({"-Force", TokenType::Option}));
    EXPECT_TRUE(parser.filterOn({"maximumlba", TokenType::Property}));
    EXPECT_EQ((Words{SET_DRIVE}), usageLines(commands));
    EXPECT_TRUE(commands[0].options[0].found);
    EXPECT_TRUE(commands[0].targets[0].found);
    EXPECT_TRUE(commands[0].properties[0].found);
    EXPECT_FALSE(parser.filterOn({"-force", TokenType::Property}));
    EXPECT_TRUE(commands.empty());
}

TEST_F(ParserTest, RemovesNothingForATokenTypeThatNamesNoPart) {
    for (const TokenType type : {TokenType::Unknown, TokenType::Value, TokenType::Verb,
                                 TokenType::Equal, TokenType::Comma}) {
        commands = sampleCommands();
        ASSERT_EQ(nullptr, parse({"show"}));
        EXPECT_TRUE(parser.filterOn({"x", type}));
        EXPECT_EQ((Words{SHOW_DRIVE, SHOW_SYSTEM}), usageLines(commands));
    }
    commands.clear();
    EXPECT_FALSE(parser.filterOn({"x", TokenType::Value}));
}

TEST_F(ParserTest, LogsAFaultPerCommandForATokenTypeThatNamesNoPart) {
    ASSERT_EQ(nullptr, parse({"show"}));
    const testing::CapturedLog log(0);
    EXPECT_TRUE(parser.filterOn({"x", TokenType::Value}));
    ASSERT_EQ((Words{"filterOn only accepts Token Types Target, Property, and Options, but 'x' is "
                     "type: Value",
                     "filterOn only accepts Token Types Target, Property, and Options, but 'x' is "
                     "type: Value"}),
              log.messages());
    EXPECT_EQ(0, log.entries[0].getLevel());
}

TEST_F(ParserTest, FiltersNothingWithoutCommands) {
    parser.filterOnVerb("show");
    EXPECT_TRUE(parser.filterOn({"-bogus", TokenType::Option}));
    EXPECT_TRUE(parser.filterOn({"x", TokenType::Value}));
    parser.eraseAllRemainingCommands();
    EXPECT_EQ(7U, commands.size());
}

TEST_F(ParserTest, ErasesAllRemainingCommands) {
    ASSERT_EQ(nullptr, parse({"show"}));
    parser.eraseAllRemainingCommands();
    EXPECT_TRUE(commands.empty());
}

TEST_F(ParserTest, LogsWhatItFiltersOnAndRemoves) {
    const testing::CapturedLog log(2);
    ASSERT_EQ(nullptr, parse({"show", "-all", "-norvossd"}));
    EXPECT_EQ((Words{
                  "Found verb: show\n",
                  "Found option: -all\n",
                  "Found target: -norvossd\n",
                  "Filtering on verb: show\n",
                  "Removing: version\n",
                  "Removing: help [verb = (verb)] [Name = (name)]\n",
                  "Removing: set X = (x)\n",
                  "Removing: set -system EnableLog = ('true'|'false')\n",
                  "Removing: set [-force|-f] -norvossd (index) MaximumLBA = (native)\n",
                  "Filtering on Target: -norvossd\n",
                  "Removing: show [-display|-d (Property1,...)] -system\n",
                  "Filtering on Option: -all\n",
              }),
              log.messages());
    EXPECT_EQ(2, log.entries.back().getLevel());
}

TEST_F(ParserTest, TracesItsStates) {
    const testing::CapturedLog log(3);
    ASSERT_EQ(nullptr,
              parser.parse({{"version", TokenType::Verb}, {"-help", TokenType::Option}}, nullptr));
    EXPECT_EQ(
        (Words{"Entering parse", "Entering initialize", "Exiting initialize", "Entering stateVerb",
               "Entering filterOnVerb", "Exiting filterOnVerb", "Exiting stateVerb",
               "Entering stateOption", "Exiting stateOption", "Exiting parse"}),
        log.messages());
    EXPECT_EQ("interfaces/cli/cliframework/Parser.cpp", log.entries[0].getFile());
    EXPECT_NE(0, log.entries[0].getLine());
}

TEST_F(ParserTest, TakesAValueOf128KibibytesWithACommaAtEachSecondByte) {
    std::string value;
    for (int count = 0; count < 65536; ++count) {
        value += "a,";
    }
    value += 'a';
    ASSERT_EQ(nullptr, parse({"show", "-d", value, "-norvossd", value}));
    EXPECT_EQ(value, parser.getParsedCommand().options.at("-display"));
    EXPECT_EQ(value, parser.getParsedCommand().targets.at("-norvossd"));
    EXPECT_EQ(65537U, Parser::getTargetValues(parser.getParsedCommand(), "-norvossd").size());
}

TEST_F(ParserTest, TakesAHundredThousandProperties) {
    std::vector<Token> tokens = {{"set", TokenType::Verb}};
    for (int count = 0; count < 100000; ++count) {
        tokens.push_back({"P" + std::to_string(count), TokenType::Property});
    }
    ASSERT_EQ(nullptr, parser.parse(tokens, nullptr));
    EXPECT_EQ(100000U, parser.getParsedCommand().properties.size());
}

TEST_F(ParserTest, RefusesAValueOf128KibibytesOfCommas) {
    expectRefusal({"show", "-d", std::string(131072, ',')}, errorAt(","),
                  {SHOW_SYSTEM, SHOW_DRIVE});
    expectRefusal({"show", "-d", "a" + std::string(131072, ',')}, errorAt(","),
                  {SHOW_SYSTEM, SHOW_DRIVE});
}

}  // namespace
}  // namespace cli::framework
