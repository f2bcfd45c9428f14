// The tool's own settings: every state of their file, how it is repaired, shown and changed.
#include "tool/SystemFeature.h"

#include "interfaces/cli/cliframework/Framework.h"
#include "tests/support/ForkedChild.h"
#include "tests/support/InstallationFixture.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <string>
#include <vector>

namespace tavik::system {
namespace {

using cli::framework::CommandSpec;
using cli::framework::Framework;
using cli::framework::ParsedCommand;
using cli::framework::ResultBase;
using tavik::testing::becomeOrdinaryUser;
using tavik::testing::inForkedChild;
using Words = std::map<std::string, std::string>;

const std::string PATH = "opt/tavik_config.xml";

const std::string HEAD = R"(<?xml version="1.0" encoding="utf-8"?>)"
                         R"(<Object category="attributeList" name="TAVIK Config">)";

const std::string LOG_OFF =
    R"(<Property category="attribute" displayName="Enable Log" name="EnableLog" size="6" )"
    R"(type="string" value="false"/>)";

const std::string ADAPTER_OFF =
    R"(<Property category="attribute" displayName="Enable LSI Adapter" name="EnableLSIAdapter" )"
    R"(size="6" type="string" value="false"/>)";

const std::string LOG_FILE =
    R"(<Property category="attribute" displayName="Log File" name="LogFile" size="20" )"
    R"(type="string" value="/var/log/ORVELI.log"/>)";

const std::string TAIL = "</Object>";

const std::string DEFAULTS = HEAD + LOG_OFF + ADAPTER_OFF + LOG_FILE + TAIL;

const std::string SHOWN_DEFAULTS = "- TAVIK Config -\n"
                                   "EnableLog: false\n"
                                   "EnableLSIAdapter: false\n"
                                   "LogFile: /var/log/ORVELI.log\n"
                                   "\n";

const std::string WRITE_FAILURE =
    "5 Error: Failed to write TAVIK configuration file. opt/tavik_config.xml";

std::string setting(const std::string& name, const std::string& value) {
    return R"(<Property name=")" + name + R"(" type="string" value=")" + value + R"("/>)";
}

std::string configOf(const std::string& settings) {
    return R"(<Object name="TAVIK Config">)" + settings + "</Object>";
}

std::string configOf(const std::string& log, const std::string& adapter, const std::string& file) {
    return configOf(setting("EnableLog", log) + setting("EnableLSIAdapter", adapter) +
                    setting("LogFile", file));
}

std::unique_ptr<ResultBase> run(SystemFeature& feature, int id, const Words& options,
                                const Words& properties) {
    CommandSpec command;
    command.id = id;
    ParsedCommand parsed;
    parsed.options = options;
    parsed.targets = {{"-system", ""}};
    parsed.properties = properties;
    return feature.run(command, parsed);
}

std::string showAll() {
    SystemFeature feature;
    return run(feature, 2, {{"-all", ""}}, {})->outputText();
}

/// "code text" of setting the log file with a fresh feature.
std::string setLogFile(const std::string& value) {
    SystemFeature feature;
    const auto result = run(feature, 1, {}, {{"LogFile", value}});
    return std::to_string(result->getErrorCode()) + " " + result->outputText();
}

/// Shows all settings, then changes one.
std::string showAndSet() {
    const std::string shown = showAll();
    return shown + setLogFile("/y.log");
}

class SystemFeatureTest : public tavik::testing::InstallationFixture {
protected:
    /// What the copy of the process, which must end well, returns as an ordinary user.
    static std::string asOrdinaryUser(const std::function<std::string()>& body) {
        const auto finding = inForkedChild([&body] {
            becomeOrdinaryUser();
            return body();
        });
        EXPECT_EQ(finding.exitCode, 0);
        EXPECT_EQ(finding.signal, 0);
        return finding.text;
    }

    static void setMode(const std::string& path, unsigned mode) {
        std::filesystem::permissions(path, std::filesystem::perms(mode));
    }

    static unsigned modeOf(const std::string& path) {
        return static_cast<unsigned>(std::filesystem::status(path).permissions());
    }

    /// Gives a file to whoever `asOrdinaryUser` is, if this process may do so.
    static void giveAway(const std::string& path) {
        if (::geteuid() == 0) {
            ASSERT_EQ(::chown(path.c_str(), 65534, 65534), 0);
        }
    }
};

// --- Declarations ---

TEST_F(SystemFeatureTest, DeclaresThreeCommands) {
    struct Row {
        int id;
        const char* name;
        const char* verb;
        const char* helpText;
        const char* usage;
    };

    const Row rows[] = {
        {0, "EnableLog", "set", "Enable/Disable TAVIK tool debug log.",
         "set [-help|-h] -system EnableLog = ('true'|'false')"},
        {1, "LogFile", "set", "Set the path and filename of the TAVIK log file.",
         "set [-help|-h] -system LogFile = (file name)"},
        {2, "System", "show", "Show TAVIK configuration settings.",
         "show [-help|-h] [-display|-d (Property1,...)] [-all|-a] -system"},
    };
    std::vector<CommandSpec> commands(1);
    SystemFeature().getPaths(commands);

    ASSERT_EQ(commands.size(), 4U);
    for (std::size_t i = 0; i < 3; ++i) {
        SCOPED_TRACE(rows[i].name);
        const CommandSpec& declared = commands[i + 1];
        EXPECT_EQ(declared.id, rows[i].id);
        EXPECT_EQ(declared.name, rows[i].name);
        EXPECT_EQ(declared.verb, rows[i].verb);
        EXPECT_EQ(declared.helpText, rows[i].helpText);
        EXPECT_EQ(declared.asStr(), rows[i].usage);
        ASSERT_EQ(declared.targets.size(), 1U);
        EXPECT_EQ(declared.targets[0].name, "-system");
        EXPECT_TRUE(declared.targets[0].required);
        EXPECT_EQ(declared.targets[0].valueText, "");
        EXPECT_FALSE(declared.targets[0].valueRequired);
        EXPECT_FALSE(declared.targets[0].noValue);
        EXPECT_EQ(declared.targets[0].helpText, "System target is required.");
    }
    ASSERT_EQ(commands[1].properties.size(), 1U);
    EXPECT_TRUE(commands[1].properties[0].required);
    EXPECT_TRUE(commands[1].properties[0].valueRequired);
    EXPECT_EQ(commands[1].properties[0].helpText,
              "true = enable TAVIK logging. false = disable TAVIK logging.");
    ASSERT_EQ(commands[2].properties.size(), 1U);
    EXPECT_TRUE(commands[2].properties[0].required);
    EXPECT_TRUE(commands[2].properties[0].valueRequired);
    EXPECT_EQ(commands[2].properties[0].helpText, "Valid directory path and file name");
    EXPECT_TRUE(commands[3].properties.empty());
}

// --- The states of the file ---

TEST_F(SystemFeatureTest, WritesTheDefaultsIfThereIsNoFile) {
    SystemFeature feature;

    EXPECT_EQ(get(PATH), DEFAULTS);
    EXPECT_EQ(namesIn("opt"), std::vector<std::string>{"tavik_config.xml"});
}

TEST_F(SystemFeatureTest, RepairsAFileThatIsNoConfiguration) {
    const std::string log = setting("EnableLog", "true");
    const std::string adapter = setting("EnableLSIAdapter", "true");
    const std::string file = setting("LogFile", "/x.log");

    struct Row {
        const char* about;
        std::string text;
    };

    const Row rows[] = {
        {"empty", ""},
        {"blank", " \n"},
        {"garbage", "garbage"},
        {"bytes beyond ASCII", "\xFF\xFE\x80"},
        {"only zero bytes", std::string(20, '\0')},
        {"a zero byte in front", std::string(1, '\0') + DEFAULTS},
        {"a zero byte inside", "<Object name=\"TAVIK Config\">" + std::string(1, '\0') + log +
                                   adapter + file + "</Object>"},
        {"a zero byte in a value", configOf("true", "true", std::string("/x\0y", 4))},
        {"cut short", DEFAULTS.substr(0, DEFAULTS.size() - 1)},
        {"no object", "<?xml version=\"1.0\"?>"},
        {"a message", "<Message name=\"TAVIK Config\">" + log + adapter + file + "</Message>"},
        {"a list", "<List name=\"TAVIK Config\"></List>"},
        {"a property", "<Property name=\"TAVIK Config\"/>"},
        {"another element", "<Other name=\"TAVIK Config\">" + log + adapter + file + "</Other>"},
        {"another name", "<Object name=\"Config\">" + log + adapter + file + "</Object>"},
        {"another case", "<Object name=\"TAVIK config\">" + log + adapter + file + "</Object>"},
        {"no name", "<Object>" + log + adapter + file + "</Object>"},
        {"nothing in it", configOf("")},
        {"no EnableLog", configOf(adapter + file)},
        {"no EnableLSIAdapter", configOf(log + file)},
        {"no LogFile", configOf(log + adapter)},
        {"a key in another case", configOf(setting("enableLog", "true") + adapter + file)},
        {"a setting without a type",
         configOf("<Property name=\"EnableLog\" value=\"true\"/>" + adapter + file)},
        {"settings in a child object", configOf("<Object>" + log + adapter + file + "</Object>")},
        {"bad EnableLog", configOf("maybe", "true", "/x.log")},
        {"empty EnableLog", configOf("", "true", "/x.log")},
        {"EnableLog with a blank", configOf("true ", "true", "/x.log")},
        {"EnableLog as a digit", configOf("1", "true", "/x.log")},
        {"bad EnableLSIAdapter", configOf("true", "yes", "/x.log")},
        {"empty EnableLSIAdapter", configOf("true", "", "/x.log")},
        {"empty LogFile", configOf("true", "true", "")},
        {"a later EnableLog that is bad",
         configOf(log + adapter + file + setting("EnableLog", "maybe"))},
        {"too large", configOf("true", "true", "/x.log") + std::string(64UL * 1024 * 1024, ' ')},
        {"nested too deep",
         [] {
             std::string text;
             for (int i = 0; i < 100000; ++i)
                 text += "<Object>";
             return text;
         }()},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.about);
        put(PATH, row.text);
        EXPECT_EQ(showAll(), SHOWN_DEFAULTS);
        EXPECT_EQ(get(PATH), DEFAULTS);
    }
    EXPECT_EQ(namesIn("opt"), std::vector<std::string>{"tavik_config.xml"});
}

TEST_F(SystemFeatureTest, LeavesAValidFileAsItIs) {
    struct Row {
        const char* about;
        std::string text;
        std::string shown;
    };

    const auto shown = [](const std::string& log, const std::string& adapter,
                          const std::string& file) {
        return "- TAVIK Config -\nEnableLog: " + log + "\nEnableLSIAdapter: " + adapter +
               "\nLogFile: " + file + "\n\n";
    };
    const Row rows[] = {
        {"the defaults", DEFAULTS, SHOWN_DEFAULTS},
        {"other values", configOf("true", "true", "/x.log"), shown("true", "true", "/x.log")},
        {"any case", configOf("TRUE", "False", "x"), shown("TRUE", "False", "x")},
        {"a blank file name", configOf("true", "false", " "), shown("true", "false", " ")},
        {"bytes beyond ASCII", configOf("true", "false", "/\xC3\xA4\xFF.log"),
         shown("true", "false", "/\xC3\xA4\xFF.log")},
        {"entities", configOf("true", "false", "&lt;&amp;&quot;&apos;&gt;"),
         shown("true", "false", "<&\"'>")},
        {"a long file name", configOf("true", "false", std::string(100000, 'x')),
         shown("true", "false", std::string(100000, 'x'))},
        {"a later setting of the same name",
         configOf(setting("EnableLog", "maybe") + setting("EnableLSIAdapter", "false") +
                  setting("LogFile", "") + setting("LogFile", "/y") + setting("EnableLog", "true")),
         shown("true", "false", "/y")},
        {"another order",
         configOf(setting("LogFile", "/x") + setting("EnableLSIAdapter", "false") +
                  setting("EnableLog", "true")),
         "- TAVIK Config -\nLogFile: /x\nEnableLSIAdapter: false\nEnableLog: true\n\n"},
        {"settings of others",
         configOf(setting("Other", "1") + setting("EnableLSIAdapter", "false") +
                  setting("EnableLog", "true") + setting("LogFile", "/x") + setting("", "2")),
         "- TAVIK Config -\nOther: 1\nEnableLSIAdapter: false\nEnableLog: true\nLogFile: /x\n"
         ": 2\n\n"},
        {"line breaks between",
         "<?xml version=\"1.0\"?>\n<Object name=\"TAVIK Config\">\n  " +
             setting("EnableLog", "true") + "\r\n\t" + setting("EnableLSIAdapter", "false") +
             "text" + setting("LogFile", "/x") + "\n</Object>\n",
         shown("true", "false", "/x")},
        {"a zero byte behind it", DEFAULTS + std::string("\0garbage", 8), SHOWN_DEFAULTS},
        {"another category",
         "<Object category=\"x\" name=\"TAVIK Config\">" + setting("EnableLog", "true") +
             setting("EnableLSIAdapter", "false") + setting("LogFile", "/x") + "</Object>",
         shown("true", "false", "/x")},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.about);
        put(PATH, row.text);
        EXPECT_EQ(showAll(), row.shown);
        EXPECT_EQ(get(PATH), row.text);
    }
}

TEST_F(SystemFeatureTest, KeepsTheModeOfAFileThatItRepairs) {
    put(PATH, "garbage");
    setMode(PATH, 0640);

    SystemFeature feature;

    EXPECT_EQ(get(PATH), DEFAULTS);
    EXPECT_EQ(modeOf(PATH), 0640U);
}

TEST_F(SystemFeatureTest, NeverMakesTheFolder) {
    std::filesystem::remove("opt");

    EXPECT_EQ(showAll(), SHOWN_DEFAULTS);
    EXPECT_EQ(setLogFile("/x.log"), WRITE_FAILURE);
    EXPECT_FALSE(std::filesystem::exists("opt"));
}

TEST_F(SystemFeatureTest, LivesWithAFolderInThePlaceOfTheFile) {
    std::filesystem::create_directory(PATH);

    EXPECT_EQ(showAll(), SHOWN_DEFAULTS);
    EXPECT_EQ(setLogFile("/x.log"), WRITE_FAILURE);
    EXPECT_TRUE(std::filesystem::is_directory(PATH));
    EXPECT_EQ(namesIn("opt"), std::vector<std::string>{"tavik_config.xml"});
}

TEST_F(SystemFeatureTest, DoesNotWaitForAPipeInThePlaceOfTheFile) {
    ASSERT_EQ(::mkfifo(PATH.c_str(), 0600), 0);

    EXPECT_EQ(showAll(), SHOWN_DEFAULTS);
    EXPECT_EQ(setLogFile("/x.log"), WRITE_FAILURE);
    EXPECT_TRUE(std::filesystem::is_fifo(PATH));
}

TEST_F(SystemFeatureTest, ReplacesTheFileThatALinkLeadsTo) {
    std::filesystem::create_directory("elsewhere");
    put("elsewhere/target", "garbage");
    setMode("elsewhere/target", 0640);
    std::filesystem::create_symlink("../elsewhere/target", PATH);
    std::ifstream old("elsewhere/target");

    EXPECT_EQ(showAll(), SHOWN_DEFAULTS);

    EXPECT_EQ(std::filesystem::read_symlink(PATH), "../elsewhere/target");
    EXPECT_EQ(get("elsewhere/target"), DEFAULTS);
    EXPECT_EQ(modeOf("elsewhere/target"), 0640U);
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(old), {}), "garbage");
    EXPECT_EQ(namesIn("elsewhere"), std::vector<std::string>{"target"});
    EXPECT_EQ(namesIn("opt"), std::vector<std::string>{"tavik_config.xml"});
}

TEST_F(SystemFeatureTest, MakesTheFileThatALinkLeadsTo) {
    std::filesystem::create_symlink("../target", PATH);

    EXPECT_EQ(showAll(), SHOWN_DEFAULTS);

    EXPECT_TRUE(std::filesystem::is_symlink(PATH));
    EXPECT_EQ(get("target"), DEFAULTS);
}

TEST_F(SystemFeatureTest, LivesWithAFileThatItMayNotRead) {
    put(PATH, configOf("true", "true", "/x.log"));
    giveAway("opt");
    setMode(PATH, 0);

    EXPECT_EQ(asOrdinaryUser(showAndSet), SHOWN_DEFAULTS + WRITE_FAILURE);

    setMode(PATH, 0600);
    EXPECT_EQ(get(PATH), configOf("true", "true", "/x.log"));
    EXPECT_EQ(namesIn("opt"), std::vector<std::string>{"tavik_config.xml"});
}

TEST_F(SystemFeatureTest, ReadsAFileThatItMayNotWrite) {
    put(PATH, configOf("true", "true", "/x.log"));
    giveAway("opt");
    setMode(PATH, 0444);

    EXPECT_EQ(asOrdinaryUser(showAndSet),
              "- TAVIK Config -\nEnableLog: true\nEnableLSIAdapter: true\nLogFile: /x.log\n\n" +
                  WRITE_FAILURE);
    EXPECT_EQ(get(PATH), configOf("true", "true", "/x.log"));
}

TEST_F(SystemFeatureTest, LivesWithABadFileThatItMayNotWrite) {
    put(PATH, "garbage");
    setMode(PATH, 0444);
    setMode("opt", 0555);

    EXPECT_EQ(asOrdinaryUser(showAndSet), SHOWN_DEFAULTS + WRITE_FAILURE);
    EXPECT_EQ(get(PATH), "garbage");
    setMode("opt", 0755);
}

TEST_F(SystemFeatureTest, MakesNoFileInAFolderThatTakesNone) {
    setMode("opt", 0555);

    EXPECT_EQ(asOrdinaryUser(showAndSet), SHOWN_DEFAULTS + WRITE_FAILURE);
    EXPECT_EQ(namesIn("opt"), std::vector<std::string>{});
    setMode("opt", 0755);
}

TEST_F(SystemFeatureTest, WritesOverTheFileInAFolderThatTakesNoNewOne) {
    put(PATH, "garbage");
    giveAway(PATH);
    setMode(PATH, 0600);
    setMode("opt", 0555);

    EXPECT_EQ(asOrdinaryUser([] {
                  const std::string shown = showAll();
                  const std::string repaired = get(PATH);
                  return shown + repaired + setLogFile("/y");
              }),
              SHOWN_DEFAULTS + DEFAULTS + "0 Set LogFile successful.");
    EXPECT_EQ(get(PATH), HEAD + LOG_OFF + ADAPTER_OFF +
                             R"(<Property category="attribute" displayName="Log File" )"
                             R"(name="LogFile" size="3" type="string" value="/y"/>)" +
                             TAIL);
    setMode("opt", 0755);
}

TEST_F(SystemFeatureTest, LeavesTheOldFileIfTheNewOneDoesNotFit) {
    put(PATH, DEFAULTS);
    const auto finding = inForkedChild([] {
        const rlimit limit = {100, 100};
        ::setrlimit(RLIMIT_FSIZE, &limit);
        ::signal(SIGXFSZ, SIG_IGN);
        return setLogFile("/y.log");
    });

    EXPECT_EQ(finding.text, WRITE_FAILURE);
    EXPECT_EQ(finding.exitCode, 0);
    EXPECT_EQ(get(PATH), DEFAULTS);
    EXPECT_EQ(namesIn("opt"), std::vector<std::string>{"tavik_config.xml"});
}

// --- Changing settings ---

TEST_F(SystemFeatureTest, WritesASettingAsItIsGiven) {
    struct Row {
        int id;
        const char* name;
        std::string value;
        std::string settings;
    };

    const auto logFile = [](const std::string& size, const std::string& value) {
        return LOG_OFF + ADAPTER_OFF +
               R"(<Property category="attribute" displayName="Log File" name="LogFile" size=")" +
               size + R"(" type="string" value=")" + value + R"("/>)";
    };
    const auto enableLog = [](const std::string& size, const std::string& value) {
        return R"(<Property category="attribute" displayName="Enable Log" name="EnableLog" size=")" +
               size + R"(" type="string" value=")" + value + R"("/>)" + ADAPTER_OFF + LOG_FILE;
    };
    const Row rows[] = {
        {0, "EnableLog", "true", enableLog("5", "true")},
        {0, "EnableLog", "TRUE", enableLog("5", "TRUE")},
        {0, "EnableLog", "False", enableLog("6", "False")},
        {1, "LogFile", "/no/such/folder/x.log", logFile("22", "/no/such/folder/x.log")},
        {1, "LogFile", "a,b c=d", logFile("8", "a,b c=d")},
        {1, "LogFile", "true", logFile("5", "true")},
        {1, "LogFile", " ", logFile("2", " ")},
        {1, "LogFile", "", logFile("1", "")},
        {1, "LogFile", "\xC3\xA4\xFF", logFile("4", "\xC3\xA4\xFF")},
        {1, "LogFile", "<&\"'>", logFile("6", "&amp;lt;&amp;&quot;&apos;&amp;gt;")},
        {3, "EnableLSIAdapter", "True",
         LOG_OFF +
             R"(<Property category="attribute" displayName="Enable LSI Adapter" )"
             R"(name="EnableLSIAdapter" size="5" type="string" value="True"/>)" +
             LOG_FILE},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.value);
        std::filesystem::remove(PATH);
        SystemFeature feature;
        const auto result = run(feature, row.id, {}, {{row.name, row.value}});
        EXPECT_EQ(result->outputText(), std::string("Set ") + row.name + " successful.");
        EXPECT_EQ(result->getErrorCode(), 0);
        EXPECT_EQ(get(PATH), HEAD + row.settings + TAIL);
    }
}

TEST_F(SystemFeatureTest, RefusesASettingAndLeavesTheFile) {
    struct Row {
        int id;
        Words properties;
        int code;
        const char* text;
    };

    const char* const badLog = "Error: Invalid value for EnableLog property. Supported values are "
                               "'true' and 'false'.";
    const Row rows[] = {
        {0, {{"EnableLog", "maybe"}}, 6, badLog},
        {0, {{"EnableLog", ""}}, 6, badLog},
        {0, {{"EnableLog", "1"}}, 6, badLog},
        {0, {{"EnableLog", "true,false"}}, 6, badLog},
        {0, {{"EnableLog", " true"}}, 6, badLog},
        {0, {}, 7, "Error: Could not find property for: EnableLog"},
        {0, {{"LogFile", "x"}}, 7, "Error: Could not find property for: EnableLog"},
        {0, {{"enablelog", "true"}}, 7, "Error: Could not find property for: EnableLog"},
        {1, {}, 7, "Error: Could not find property for: LogFile"},
        {3,
         {{"EnableLSIAdapter", "on"}},
         6,
         "Error: Invalid value for EnableLSIAdapter property. Supported values are 'true' and "
         "'false'."},
        {3, {}, 7, "Error: Could not find property for: EnableLSIAdapter"},
        {4,
         {},
         3,
         "Error: CommandSpecId 4 of Feature System is not supported in the current context."},
        {-1,
         {},
         3,
         "Error: CommandSpecId -1 of Feature System is not supported in the current context."},
    };
    const std::string before = configOf("true", "false", "/x.log");
    put(PATH, before);
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        SystemFeature feature;
        const auto result = run(feature, row.id, {}, row.properties);
        EXPECT_EQ(result->outputText(), row.text);
        EXPECT_EQ(result->getErrorCode(), row.code);
        EXPECT_EQ(get(PATH), before);
    }
}

TEST_F(SystemFeatureTest, KeepsTheSettingsOfOthersAndTheModeOfTheFile) {
    put(PATH, configOf(setting("Other", "1") + setting("EnableLog", "maybe") +
                       setting("EnableLSIAdapter", "TRUE") + setting("LogFile", "/x") +
                       setting("EnableLog", "true")));
    setMode(PATH, 0604);

    EXPECT_EQ(setLogFile("/y"), "0 Set LogFile successful.");

    EXPECT_EQ(
        get(PATH),
        HEAD +
            R"(<Property category="attribute" displayName="" name="Other" size="2" type="string" )"
            R"(value="1"/>)"
            R"(<Property category="attribute" displayName="" name="EnableLog" size="5" )"
            R"(type="string" value="true"/>)"
            R"(<Property category="attribute" displayName="" name="EnableLSIAdapter" size="5" )"
            R"(type="string" value="TRUE"/>)"
            R"(<Property category="attribute" displayName="Log File" name="LogFile" size="3" )"
            R"(type="string" value="/y"/>)" +
            TAIL);
    EXPECT_EQ(modeOf(PATH), 0604U);
    EXPECT_EQ(namesIn("opt"), std::vector<std::string>{"tavik_config.xml"});
}

TEST_F(SystemFeatureTest, LosesEverySettingWithTheLogFilesName) {
    EXPECT_EQ(setLogFile(""), "0 Set LogFile successful.");

    EXPECT_EQ(showAll(), SHOWN_DEFAULTS);
    EXPECT_EQ(get(PATH), DEFAULTS);
}

// --- Showing settings ---

TEST_F(SystemFeatureTest, ShowsTheSettingsThatTheOptionsSelect) {
    struct Row {
        Words options;
        std::string lines;
    };

    const std::string log = "EnableLog: false\n";
    const std::string adapter = "EnableLSIAdapter: false\n";
    const std::string file = "LogFile: /var/log/ORVELI.log\n";
    const std::string none = "No results\n";
    const auto missing = [](const std::string& name) {
        return name + ": Property does not exist.\n";
    };
    const Row rows[] = {
        {{}, log + file},
        {{{"-all", ""}}, log + adapter + file},
        {{{"-display", "enablelog"}}, log},
        {{{"-display", "LOGFILE"}}, file},
        {{{"-display", "EnableLSIAdapter"}}, adapter},
        {{{"-display", "LogFile,EnableLog"}}, log + file},
        {{{"-display", "Foo,LogFile"}}, file + missing("Foo")},
        {{{"-display", " LogFile\t, Foo Bar ,EnableLog"}}, log + file + missing("Foo Bar")},
        {{{"-display", "Foo,foo,FOO,Bar"}}, missing("Foo") + missing("Bar")},
        {{{"-display", "LogFile,logfile"}}, file},
        {{{"-display", "Log File"}}, missing("Log File")},
        {{{"-display", ""}}, none},
        {{{"-display", " "}}, none},
        {{{"-display", "\t"}}, none},
        {{{"-display", ","}}, none},
        {{{"-display", " , ,\t,"}}, none},
        {{{"-display", ",LogFile, ,"}}, file},
        {{{"-display", "\xC3\xA4"}}, missing("\xC3\xA4")},
        {{{"-display", std::string(100000, ',')}}, none},
        {{{"-all", ""}, {"-display", "Foo"}}, log + adapter + file + missing("Foo")},
        {{{"-force", ""}}, log + file},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(::testing::PrintToString(row.options).substr(0, 100));
        SystemFeature feature;
        const auto result = run(feature, 2, row.options, {});
        EXPECT_EQ(result->outputText(), "- TAVIK Config -\n" + row.lines + "\n");
        EXPECT_EQ(result->getErrorCode(), 0);
    }
}

TEST_F(SystemFeatureTest, TellsOnceOfEachOfVeryManyUnknownNames) {
    constexpr int NAMES = 30000;
    std::string names = "LogFile";
    std::string lines = "LogFile: /var/log/ORVELI.log\n";
    for (int i = 0; i < NAMES; ++i) {
        const std::string number = std::to_string(i);
        names += ",x" + number + ",X" + number;
        lines += "x" + number + ": Property does not exist.\n";
    }
    SystemFeature feature;
    const auto result = run(feature, 2, {{"-display", names}}, {});
    EXPECT_EQ(result->outputText(), "- TAVIK Config -\n" + lines + "\n");
}

TEST_F(SystemFeatureTest, ShowsTheSettingsInEveryFormat) {
    SystemFeature feature;
    const auto result = run(feature, 2, {}, {});

    EXPECT_EQ(result->outputXml(), "<RootList>\n"
                                   "<TAVIK_Config>\n"
                                   "\t<EnableLog>false</EnableLog>\n"
                                   "\t<LogFile>/var/log/ORVELI.log</LogFile>\n"
                                   "</TAVIK_Config>\n"
                                   "</RootList>\n");
    EXPECT_EQ(result->outputJson(), "{\n"
                                    "\t\"TAVIK Config\":\n"
                                    "\t{\n"
                                    "\t\t\"EnableLog\":false,\n"
                                    "\t\t\"LogFile\":\"/var/log/ORVELI.log\"\n"
                                    "\t}\n"
                                    "}\n");
    EXPECT_EQ(result->outputCSV(), "TAVIK Config,\n"
                                   "EnableLog,false,LogFile,/var/log/ORVELI.log,,\n");
    EXPECT_EQ(result->outputEsxXml(),
              "<?xml version=\"1.0\"?>"
              "<output xmlns=\"http://www.vmware.com/Products/ESX/5.0/esxcli/\">"
              "<list type=\"structure\">"
              "<structure typeName=\"KeyValue\">"
              "<field name=\"Attribute Name\"><string>EnableLog</string></field>"
              "<field name=\"Value\"><string>false</string></field></structure>"
              "<structure typeName=\"KeyValue\">"
              "<field name=\"Attribute Name\"><string>LogFile</string></field>"
              "<field name=\"Value\"><string>/var/log/ORVELI.log</string></field></structure>"
              "</list></output>");
}

// --- Typed lines ---

TEST_F(SystemFeatureTest, IsReachedThroughTheFramework) {
    struct Row {
        std::vector<std::string> line;
        int code;
        std::string text;
    };

    const std::string heading = "- TAVIK Config -\n";
    const std::string log = "EnableLog: false\n";
    const std::string file = "LogFile: /var/log/ORVELI.log\n";
    const Row rows[] = {
        {{"show", "-system"}, 0, heading + log + file + "\n"},
        {{"SHOW", "-SYSTEM"}, 0, heading + log + file + "\n"},
        {{"show", "-all", "-system"}, 0, SHOWN_DEFAULTS},
        {{"show", "-a", "-system"}, 0, SHOWN_DEFAULTS},
        {{"show", "-display", "LogFile", "-system"}, 0, heading + file + "\n"},
        {{"show", "-d", "enablelog", "-system"}, 0, heading + log + "\n"},
        {{"show", "-display", "Foo,LogFile", "-system"},
         0,
         heading + file + "Foo: Property does not exist.\n\n"},
        {{"show", "-display", " ", "-system"}, 0, heading + "No results\n\n"},
        {{"show", "-display", "\t", "-system"}, 0, heading + "No results\n\n"},
        {{"show", "-all", "-display", "LogFile", "-system"},
         201,
         "Syntax Error: Options 'all' and 'display' cannot be used together."},
        {{"show", "-display", "", "-system"},
         201,
         "Syntax Error: A value is required for the option 'display'."},
        {{"set", "-system", "EnableLog=maybe"},
         6,
         "Error: Invalid value for EnableLog property. Supported values are 'true' and 'false'."},
        {{"set", "-system", "EnableLog"},
         201,
         "Syntax Error: A value is required for the property 'EnableLog'."},
        {{"set", "-system", "EnableLog=false"}, 0, "Set EnableLog successful."},
        {{"set", "-system", "enablelog=FALSE"}, 0, "Set EnableLog successful."},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(::testing::PrintToString(row.line));
        put(PATH, DEFAULTS);
        Framework::tearDown();
        Framework::getInstance().addFeature("System", std::make_unique<SystemFeature>());
        const auto result = Framework::getInstance().execute(row.line);
        EXPECT_EQ(result->outputText(), row.text);
        EXPECT_EQ(result->getErrorCode(), row.code);
    }
    Framework::tearDown();
}

TEST_F(SystemFeatureTest, ComesBackWithAResultWhateverIsTyped) {
    const std::vector<std::string> lines[] = {
        {"show", "-display", ",", "-system"},
        {"show", "-display", ",,", "-system"},
        {"show", "-display", " , ", "-system"},
        {"show", "-display", "a,", "-system"},
        {"show", "-display", ",a", "-system"},
        {"show", "-display", "=", "-system"},
        {"show", "-display=", "-system"},
        {"show", "-display", "-system"},
        {"show", "-system", "-display", " "},
        {"show", "-system", ""},
        {"show", "", "-system"},
        {"", ""},
        {" "},
        {"set", "-system", "LogFile="},
        {"set", "-system", "LogFile=,"},
        {"set", "-system", "=x"},
        {"set", "-system", "EnableLSIAdapter=true"},
        {"set", "-system", "EnableLog=true", "LogFile=x"},
        {"set", "-system", std::string(100000, '=')},
        {"show", "-display", std::string(100000, ','), "-system"},
    };
    for (const auto& line : lines) {
        SCOPED_TRACE(::testing::PrintToString(line).substr(0, 100));
        Framework::tearDown();
        Framework::getInstance().addFeature("System", std::make_unique<SystemFeature>());
        const auto result = Framework::getInstance().execute(line);
        ASSERT_NE(result, nullptr);
        EXPECT_NE(result->outputText(), "");
    }
    Framework::tearDown();
}

}  // namespace
}  // namespace tavik::system
