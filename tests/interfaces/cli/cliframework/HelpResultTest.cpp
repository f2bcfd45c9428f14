// Help in every format, and its text on terminals of every width.
#include "interfaces/cli/cliframework/HelpResult.h"

#include "interfaces/cli/cliframework/Framework.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <pty.h>
#include <stdexcept>
#include <string>
#include <sys/ioctl.h>
#include <unistd.h>
#include <utility>

namespace {

using namespace cli::framework;

constexpr bool REQUIRED = true;
constexpr bool OPTIONAL = false;
constexpr bool VALUE_REQUIRED = true;
constexpr bool VALUE_OPTIONAL = false;

/// Puts another file in the place of standard input while it lives.
class StandardInput {
public:
    explicit StandardInput(int file) : saved(::fcntl(STDIN_FILENO, F_DUPFD_CLOEXEC, 3)) {
        if (::dup2(file, STDIN_FILENO) != STDIN_FILENO) throw std::runtime_error("no input");
    }

    StandardInput(const StandardInput&) = delete;
    StandardInput& operator=(const StandardInput&) = delete;

    ~StandardInput() {
        if (saved < 0) {
            ::close(STDIN_FILENO);
        } else {
            ::dup2(saved, STDIN_FILENO);
            ::close(saved);
        }
    }

private:
    int saved;  // -1 if standard input was closed
};

/// The help's text on a terminal of so many columns.
std::string textOnTerminal(const HelpResult& help, unsigned columns) {
    winsize size{};
    size.ws_row = 24;
    size.ws_col = static_cast<unsigned short>(columns);
    int master = -1;
    int slave = -1;
    if (::openpty(&master, &slave, nullptr, nullptr, &size) != 0) {
        throw std::runtime_error("no pseudo-terminal");
    }
    std::string text;
    {
        const StandardInput input(slave);
        text = help.outputText();
    }
    ::close(slave);
    ::close(master);
    return text;
}

std::string textWithoutTerminal(const HelpResult& help) {
    const int null = ::open("/dev/null", O_RDONLY | O_CLOEXEC);
    std::string text;
    {
        const StandardInput input(null);
        text = help.outputText();
    }
    ::close(null);
    return text;
}

/// Each test begins and ends without a framework.
class HelpResultTest : public ::testing::Test {
protected:
    HelpResultTest() { Framework::tearDown(); }

    ~HelpResultTest() override { Framework::tearDown(); }
};

CommandSpec enableLog() {
    CommandSpec spec(1, "EnableLog", "set", "Enable the log.");
    spec.addOption(OPTION_HELP);
    spec.addOption(OPTION_OUTPUT);
    spec.addTarget("-system", REQUIRED, "", VALUE_OPTIONAL, "");
    spec.addProperty("EnableLog", REQUIRED, "'true'|'false'", VALUE_REQUIRED,
                     "Turn \"logging\" on.");
    return spec;
}

/// Parts in all combinations, without help texts of their own.
CommandSpec parts() {
    CommandSpec spec(2, "Parts", "show", "");
    spec.addOption("-bare", OPTIONAL, "", VALUE_OPTIONAL, "", "");
    spec.addOption("-short", REQUIRED, "", VALUE_OPTIONAL, "", "-s");
    spec.addOption("-name", OPTIONAL, "value", VALUE_OPTIONAL, "", "");
    spec.addOption("-must", REQUIRED, "value", VALUE_REQUIRED, "", "");
    spec.addOption("-both", OPTIONAL, "value", VALUE_REQUIRED, "With help", "-b");
    spec.addTarget("-t", REQUIRED, "x", VALUE_OPTIONAL, "");
    spec.addTarget("-u", OPTIONAL, "x", VALUE_OPTIONAL, "Other");
    spec.addProperty("p", OPTIONAL, "v", VALUE_OPTIONAL, "");
    spec.addProperty("q", REQUIRED, "v", VALUE_REQUIRED, "");
    spec.addProperty("r", REQUIRED, "", VALUE_REQUIRED, "");
    return spec;
}

HelpResult one(CommandSpec spec) {
    HelpResult help;
    help.push_back(std::move(spec));
    return help;
}

HelpResult two() {
    HelpResult help;
    help.push_back(enableLog());
    help.push_back(CommandSpec(0, "Version", "version", "Show the \"version\"."));
    return help;
}

/// A command whose only long text is its description.
HelpResult describing(const std::string& description) {
    return one(CommandSpec(0, "X", "go", description));
}

// The page of `describing` around its description, where nothing else is wrapped.
std::string describedPage(const std::string& wrapped) {
    return "Name: X\n"
           "Description:\n" +
           wrapped +
           "Synopsis:\n"
           "    go\n"
           "Verb:\n"
           "    go\n"
           "Options:\n"
           "Targets:\n"
           "Properties:\n";
}

TEST_F(HelpResultTest, RendersNoCommandsInEveryFormat) {
    const HelpResult empty;
    EXPECT_EQ(empty.outputText(), "No commands to display\n");
    EXPECT_EQ(empty.outputTextTable(), "No commands to display\n");
    EXPECT_EQ(empty.outputXml(), "<Help></Help>\n");
    EXPECT_EQ(empty.outputJson(), "{\n}\n");
    EXPECT_EQ(empty.outputCSV(), "");
    EXPECT_EQ(empty.outputEsxXml(), "");
}

TEST_F(HelpResultTest, ShowsOneCommandInFullWithoutATerminal) {
    EXPECT_EQ(textWithoutTerminal(one(enableLog())),
              "Name: EnableLog\n"
              "Description:\n"
              "    Enable the log.\n"
              "Synopsis:\n"
              "    set [-help|-h] [-output|-o (text|nvmxml|json)] -system EnableLog = "
              "('true'|'false')\n"
              "Verb:\n"
              "    set\n"
              "Options:\n"
              "    [-help|-h] -- Display help for the command.\n"
              "    [-output|-o (text|nvmxml|json)] -- Change the output format. One of \"text\", "
              "\"nvmxml\" or \"json\".\n"
              "Targets:\n"
              "    -system\n"
              "Properties:\n"
              "    EnableLog = ('true'|'false') -- Turn \"logging\" on.\n");
}

TEST_F(HelpResultTest, FormatsEachKindOfPart) {
    EXPECT_EQ(textWithoutTerminal(one(parts())),
              "Name: Parts\n"
              "Description:\n"
              "Synopsis:\n"
              "    show [-bare] -short|-s [-name [(value)]] -must (value) [-both|-b (value)] "
              "-t [(x)] [-u [(x)]] [p = [(v)]] q = (v) r\n"
              "Verb:\n"
              "    show\n"
              "Options:\n"
              "    [-bare]\n"
              "    -short|-s\n"
              "    [-name [(value)]]\n"
              "    -must (value)\n"
              "    [-both|-b (value)] -- With help\n"
              "Targets:\n"
              "    -t [(x)]\n"
              "    [-u [(x)]] -- Other\n"
              "Properties:\n"
              "    [p = [(v)]]\n"
              "    q = (v)\n"
              "    r\n");
}

TEST_F(HelpResultTest, ListsSeveralCommandsWithoutATerminal) {
    EXPECT_EQ(textWithoutTerminal(two()),
              "Usage:   <verb>[<options>][<targets>][<properties>]\n"
              "\n"
              "Commands: \n"
              "EnableLog:\n"
              "    set [-help|-h] [-output|-o (text|nvmxml|json)] -system EnableLog = "
              "('true'|'false')\n"
              "Version:\n"
              "    version\n");
}

TEST_F(HelpResultTest, ReadsTheProgramNameWhileItIsWrittenOut) {
    const HelpResult help = two();
    Framework::getInstance().programName = "tavik";
    EXPECT_EQ(textWithoutTerminal(help).substr(0, 58),
              "Usage:  tavik <verb>[<options>][<targets>][<properties>]\n\n");
    Framework::tearDown();
    EXPECT_EQ(textWithoutTerminal(help).substr(0, 53),
              "Usage:   <verb>[<options>][<targets>][<properties>]\n\n");
    EXPECT_TRUE(Framework::instanceFlag);
}

TEST_F(HelpResultTest, WrapsTheFullPageToEightyColumns) {
    EXPECT_EQ(textOnTerminal(one(enableLog()), 80),
              "Name: EnableLog\n"
              "Description:\n"
              "    Enable the log.\n"
              "Synopsis:\n"
              "    set [-help|-h] [-output|-o (text|nvmxml|json)] -system EnableLog =\n"
              "    ('true'|'false')\n"
              "Verb:\n"
              "    set\n"
              "Options:\n"
              "    [-help|-h] -- Display help for the command.\n"
              "    [-output|-o (text|nvmxml|json)] -- Change the output format. One of \"text\",\n"
              "    \"nvmxml\" or \"json\".\n"
              "Targets:\n"
              "    -system\n"
              "Properties:\n"
              "    EnableLog = ('true'|'false') -- Turn \"logging\" on.\n");
}

TEST_F(HelpResultTest, WrapsTheListToEightyColumns) {
    EXPECT_EQ(textOnTerminal(two(), 80),
              "Usage:   <verb>[<options>][<targets>][<properties>]\n"
              "\n"
              "Commands: \n"
              "EnableLog:\n"
              "    set [-help|-h] [-output|-o (text|nvmxml|json)] -system EnableLog =\n"
              "    ('true'|'false')\n"
              "Version:\n"
              "    version\n");
}

TEST_F(HelpResultTest, WrapsNothingOnATerminalOfLessThanFourColumns) {
    for (const unsigned columns : {0U, 1U, 2U, 3U}) {
        SCOPED_TRACE(columns);
        EXPECT_EQ(textOnTerminal(describing("abc d"), columns), "Name: X\n"
                                                                "Description:\n"
                                                                "    abc d\n"
                                                                "Synopsis:\n"
                                                                "    go\n"
                                                                "Verb:\n"
                                                                "    go\n"
                                                                "Options:\n"
                                                                "Targets:\n"
                                                                "Properties:\n");
        EXPECT_EQ(textOnTerminal(two(), columns),
                  "Usage:   <verb>[<options>][<targets>][<properties>]\n"
                  "\n"
                  "Commands: \n"
                  "EnableLog:\n"
                  "    set [-help|-h] [-output|-o (text|nvmxml|json)] -system EnableLog = "
                  "('true'|'false')\n"
                  "Version:\n"
                  "    version\n");
    }
}

TEST_F(HelpResultTest, PrintsTextsWholeOnATerminalOfFourColumns) {
    EXPECT_EQ(textOnTerminal(one(enableLog()), 4),
              "Name: EnableLog\n"
              "Description:\n"
              "Enable the log."
              "Synopsis:\n"
              "set [-help|-h] [-output|-o (text|nvmxml|json)] -system EnableLog = "
              "('true'|'false')"
              "Verb:\n"
              "    set\n"
              "Options:\n"
              "[-help|-h] -- Display help for the command."
              "[-output|-o (text|nvmxml|json)] -- Change the output format. One of \"text\", "
              "\"nvmxml\" or \"json\"."
              "Targets:\n"
              "-system"
              "Properties:\n"
              "EnableLog = ('true'|'false') -- Turn \"logging\" on.");
    EXPECT_EQ(textOnTerminal(two(), 4), "Usage:   <verb>[<options>][<targets>][<properties>]\n"
                                        "\n"
                                        "Commands: \n"
                                        "EnableLog:\n"
                                        "set [-help|-h] [-output|-o (text|nvmxml|json)] "
                                        "-system EnableLog = ('true'|'false')"
                                        "Version:\n"
                                        "version");
}

TEST_F(HelpResultTest, LosesEverySecondByteOnATerminalOfFiveColumns) {
    EXPECT_EQ(textOnTerminal(describing("abc d"), 5), "Name: X\n"
                                                      "Description:\n"
                                                      "    a\n"
                                                      "    c\n"
                                                      "    d\n"
                                                      "Synopsis:\n"
                                                      "    g\n"
                                                      "Verb:\n"
                                                      "    go\n"
                                                      "Options:\n"
                                                      "Targets:\n"
                                                      "Properties:\n");
    EXPECT_EQ(textOnTerminal(describing("ab  cd"), 5), "Name: X\n"
                                                       "Description:\n"
                                                       "    a\n"
                                                       "     \n"
                                                       "    c\n"
                                                       "Synopsis:\n"
                                                       "    g\n"
                                                       "Verb:\n"
                                                       "    go\n"
                                                       "Options:\n"
                                                       "Targets:\n"
                                                       "Properties:\n");
}

TEST_F(HelpResultTest, BreaksLinesOfFiveBytes) {
    struct Row {
        const char* description;
        const char* wrapped;
    };

    // clang-format off
    constexpr Row ROWS[] = {
    //   description       wrapped, behind the indent of 4
        {"",               ""},
        {"abc",            "    abc\n"},
        {"abcde",          "    abcde\n"},
        {"abcde ",         "    abcde\n"},
        {"abcde f",        "    abcde\n    f\n"},
        {"abcdef",         "    abcde\n"},                     // the byte at the break is lost
        {"abcdefg",        "    abcde\n    g\n"},
        {"abcdefghijkl",   "    abcde\n    ghijk\n"},
        {"ab cd ef",       "    ab\n    cd ef\n"},             // a blank behind the width isn't seen
        {"ab cde ef",      "    ab\n    cde\n    ef\n"},
        {"a bcdefgh",      "    a\n    bcdef\n    h\n"},
        {"abc  defgh",     "    abc \n    defgh\n"},           // the last blank is the break
        {"abcd  efghi",    "    abcd\n     efgh\n"},           // a leading blank is no break
        {" abcdefgh ij",   "     abcd\n    fgh\n    ij\n"},
        {" ab cdef",       "     ab\n    cdef\n"},
        {"      ",         "        \n     \n"},               // four blanks, then one
        {"ab\ncdefg",      "    ab\ncd\n    fg\n"},            // a line feed is an ordinary byte
        {"caf\xc3\xa9s x", "    caf\xc3\xa9\n     x\n"},       // bytes are counted
    };
    // clang-format on
    for (const Row& row : ROWS) {
        SCOPED_TRACE(row.description);
        EXPECT_EQ(textOnTerminal(describing(row.description), 9), describedPage(row.wrapped));
    }
}

TEST_F(HelpResultTest, LetsLinesReachTheLastColumn) {
    const std::string description(130, 'x');
    const std::string firstLine(60, 'x');
    EXPECT_EQ(textOnTerminal(describing(description), 64),
              describedPage("    " + firstLine + "\n    " + firstLine + "\n    xxxxxxxx\n"));
}

TEST_F(HelpResultTest, WrapsALongTextWithoutBlanks) {
    const std::string description(1000001, 'x');
    std::string wrapped;
    for (int line = 0; line < 500001; ++line) {
        wrapped += "    x\n";
    }
    const std::string page = textOnTerminal(describing(description), 5);
    EXPECT_TRUE(page == "Name: X\n"
                        "Description:\n" +
                            wrapped +
                            "Synopsis:\n"
                            "    g\n"
                            "Verb:\n"
                            "    go\n"
                            "Options:\n"
                            "Targets:\n"
                            "Properties:\n");
}

TEST_F(HelpResultTest, DoesNotIndentIfWrappingIsOff) {
    HelpResult page = describing("abc d");
    page.setShouldWrap(false);
    for (const unsigned columns : {0U, 4U, 5U, 80U}) {
        SCOPED_TRACE(columns);
        EXPECT_EQ(textOnTerminal(page, columns), "Name: X\n"
                                                 "Description:\n"
                                                 "abc dSynopsis:\n"
                                                 "goVerb:\n"
                                                 "    go\n"
                                                 "Options:\n"
                                                 "Targets:\n"
                                                 "Properties:\n");
    }
    HelpResult list = two();
    list.setShouldWrap(false);
    EXPECT_EQ(textWithoutTerminal(list), "Usage:   <verb>[<options>][<targets>][<properties>]\n"
                                         "\n"
                                         "Commands: \n"
                                         "EnableLog:\n"
                                         "set [-help|-h] [-output|-o (text|nvmxml|json)] "
                                         "-system EnableLog = ('true'|'false')"
                                         "Version:\n"
                                         "version");
}

TEST_F(HelpResultTest, RendersCommandsAsXml) {
    EXPECT_EQ(two().outputXml(),
              "<Help>\n"
              "\t<Command Name=\"EnableLog\">\n"
              "\t\t<Description>Enable the log.</Description>\n"
              "\t\t<Verb>set</Verb>\n"
              "\t\t<Options>\n"
              "\t\t\t<Option Name=\"-help\" Description=\"Display help for the command.\" "
              "Required=\"False\" Value=\"\" ValueRequired=\"False\"/>\n"
              "\t\t\t<Option Name=\"-output\" Description=\"Change the output format. One of "
              "\"text\", \"nvmxml\" or \"json\".\" Required=\"False\" Value=\"text|nvmxml|json\" "
              "ValueRequired=\"True\"/>\n"
              "\t\t</Options>\n"
              "\t\t<Targets>\n"
              "\t\t\t<Target Name=\"-system\" Description=\"\" Required=\"True\" Value=\"\" "
              "ValueRequired=\"False\"/>\n"
              "\t\t</Targets>\n"
              "\t\t<Properties>\n"
              "\t\t\t<Property Name=\"EnableLog\" Description=\"Turn \"logging\" on.\" "
              "Required=\"True\" Value=\"'true'|'false'\" ValueRequired=\"True\"/>\n"
              "\t\t</Properties>\n"
              "\t</Command>\n"
              "\t<Command Name=\"Version\">\n"
              "\t\t<Description>Show the \"version\".</Description>\n"
              "\t\t<Verb>version</Verb>\n"
              "\t\t<Options></Options>\n"
              "\t\t<Targets></Targets>\n"
              "\t\t<Properties></Properties>\n"
              "\t</Command>\n"
              "</Help>\n");
}

TEST_F(HelpResultTest, RendersCommandsAsJson) {
    EXPECT_EQ(two().outputJson(),
              "{\n"
              "\t\"EnableLog\": {\n"
              "\t\t\"Description\":\"Enable the log.\",\n"
              "\t\t\"Verb\":\"set\",\n"
              "\t\t\"Options\": {\n"
              "\t\t\t\"-help\": {\n"
              "\t\t\t\"Description\":\"Display help for the command.\",\n"
              "\t\t\t\"Required\":false,\n"
              "\t\t\t\"Value\":\"\",\n"
              "\t\t\t\"ValueRequired\":false\n"
              "\t\t\t},\n"
              "\t\t\t\"-output\": {\n"
              "\t\t\t\"Description\":\"Change the output format. One of 'text', 'nvmxml' or "
              "'json'.\",\n"
              "\t\t\t\"Required\":false,\n"
              "\t\t\t\"Value\":\"text|nvmxml|json\",\n"
              "\t\t\t\"ValueRequired\":true\n"
              "\t\t\t}\n"
              "\t\t},\n"
              "\t\t\"Targets\": {\n"
              "\t\t\t\"-system\": {\n"
              "\t\t\t\"Description\":\"\",\n"
              "\t\t\t\"Required\":true,\n"
              "\t\t\t\"Value\":\"\",\n"
              "\t\t\t\"ValueRequired\":false\n"
              "\t\t\t}\n"
              "\t\t},\n"
              "\t\t\"Properties\": {\n"
              "\t\t\t\"EnableLog\": {\n"
              "\t\t\t\"Description\":\"Turn 'logging' on.\",\n"
              "\t\t\t\"Required\":true,\n"
              "\t\t\t\"Value\":\"'true'|'false'\",\n"
              "\t\t\t\"ValueRequired\":true\n"
              "\t\t\t}\n"
              "\t\t}\n"
              "\t},\n"
              "\t\"Version\": {\n"
              "\t\t\"Description\":\"Show the \"version\".\",\n"
              "\t\t\"Verb\":\"version\",\n"
              "\t\t\"Options\": {\n"
              "\t\t},\n"
              "\t\t\"Targets\": {\n"
              "\t\t},\n"
              "\t\t\"Properties\": {\n"
              "\t\t}\n"
              "\t}\n"
              "}\n");
}

TEST_F(HelpResultTest, ReplacesDoubleQuotesOfPartsButNotOfCommandsInJson) {
    CommandSpec spec(0, "a\"b", "v\"w", "c\"d");
    spec.addProperty("e\"f", OPTIONAL, "g\"h", VALUE_OPTIONAL, "i\"j");
    EXPECT_EQ(one(spec).outputJson(), "{\n"
                                      "\t\"a\"b\": {\n"
                                      "\t\t\"Description\":\"c\"d\",\n"
                                      "\t\t\"Verb\":\"v\"w\",\n"
                                      "\t\t\"Options\": {\n"
                                      "\t\t},\n"
                                      "\t\t\"Targets\": {\n"
                                      "\t\t},\n"
                                      "\t\t\"Properties\": {\n"
                                      "\t\t\t\"e'f\": {\n"
                                      "\t\t\t\"Description\":\"i'j\",\n"
                                      "\t\t\t\"Required\":false,\n"
                                      "\t\t\t\"Value\":\"g'h\",\n"
                                      "\t\t\t\"ValueRequired\":false\n"
                                      "\t\t\t}\n"
                                      "\t\t}\n"
                                      "\t}\n"
                                      "}\n");
}

TEST_F(HelpResultTest, RendersCommandsAsCsv) {
    EXPECT_EQ(two().outputCSV(), "EnableLog,\n"
                                 "Description,Enable the log.,\n"
                                 "Verb,set,\n"
                                 "Options,\n"
                                 "-help,\n"
                                 "Description,Display help for the command.,\n"
                                 "Required,false,\n"
                                 "Value,,\n"
                                 "ValueRequired,false,\n"
                                 "-output,\n"
                                 "Description,Change the output format. One of \"text\", "
                                 "\"nvmxml\" or \"json\".,\n"
                                 "Required,false,\n"
                                 "Value,text|nvmxml|json,\n"
                                 "ValueRequired,true,\n"
                                 ",\n"
                                 "Targets,\n"
                                 "-system,\n"
                                 "Description,,\n"
                                 "Required,true,\n"
                                 "Value,,\n"
                                 "ValueRequired,false,\n"
                                 ",\n"
                                 "Properties,\n"
                                 "EnableLog,\n"
                                 "Description,Turn \"logging\" on.,\n"
                                 "Required,true,\n"
                                 "Value,'true'|'false',\n"
                                 "ValueRequired,true,\n"
                                 ",\n"
                                 "Version,\n"
                                 "Description,Show the \"version\".,\n"
                                 "Verb,version,\n"
                                 "Options,\n"
                                 ",\n"
                                 "Targets,\n"
                                 ",\n"
                                 "Properties,\n"
                                 ",\n");
}

TEST_F(HelpResultTest, HasNoEsxForm) {
    EXPECT_EQ(one(enableLog()).outputEsxXml(), "");
    EXPECT_EQ(two().outputEsxXml(), "");
}

TEST_F(HelpResultTest, RendersItsTableAsText) {
    EXPECT_EQ(describing("").outputTextTable(), "Name: X\n"
                                                "Description:\n"
                                                "Synopsis:\n"
                                                "    go\n"
                                                "Verb:\n"
                                                "    go\n"
                                                "Options:\n"
                                                "Targets:\n"
                                                "Properties:\n");
}

TEST_F(HelpResultTest, DecidesByTheNumberOfCommandsAlone) {
    HelpResult help = describing("");
    EXPECT_FALSE(help.getShowFull());
    const std::string page = textWithoutTerminal(help);
    help.setShowFull(true);
    EXPECT_TRUE(help.getShowFull());
    EXPECT_EQ(textWithoutTerminal(help), page);
    EXPECT_EQ(page.substr(0, 8), "Name: X\n");

    HelpResult list = two();
    list.setShowFull(true);
    EXPECT_EQ(textWithoutTerminal(list).substr(0, 9), "Usage:   ");
}

TEST_F(HelpResultTest, KeepsItsCommandsInOrder) {
    HelpResult help;
    EXPECT_EQ(help.getCount(), 0U);
    for (const char* name : {"b", "a", "b"}) {
        help.push_back(CommandSpec(0, name, "go", ""));
    }
    EXPECT_EQ(help.getCount(), 3U);
    EXPECT_EQ(textWithoutTerminal(help), "Usage:   <verb>[<options>][<targets>][<properties>]\n"
                                         "\n"
                                         "Commands: \n"
                                         "b:\n"
                                         "    go\n"
                                         "a:\n"
                                         "    go\n"
                                         "b:\n"
                                         "    go\n");
}

TEST_F(HelpResultTest, TreatsAClosedStandardInputAsNoTerminal) {
    const HelpResult help = describing("abc d");
    const int saved = ::fcntl(STDIN_FILENO, F_DUPFD_CLOEXEC, 3);
    ::close(STDIN_FILENO);
    const std::string text = help.outputText();
    if (saved >= 0) {
        ::dup2(saved, STDIN_FILENO);
        ::close(saved);
    }
    EXPECT_EQ(text.substr(0, 31), "Name: X\nDescription:\n    abc d\n");
}

}  // namespace
