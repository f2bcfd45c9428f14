// What `version` answers.
#include "tool/VersionFeature.h"

#include "interfaces/cli/cliframework/Framework.h"
#include "tool/LicenseText.h"

#include <gtest/gtest.h>

namespace cli::version {
namespace {

using namespace cli::framework;

const std::string THREE = "- Version Information -\n"
                          "Name: Norvo(R) Tavik\n"
                          "Version: 3.0.14\n"
                          "Description: Interact and configure Norvo SSDs.\n";

std::string license() {
    return std::string("License: ") + LICENSE_HEADING + "\nNorvo(R) Tavik 3.0.14\n\n" +
           LICENSE_AGREEMENT + "\n";
}

std::unique_ptr<ResultBase> showVersion(const std::map<std::string, std::string>& options) {
    CommandSpec command;
    command.id = 0;
    ParsedCommand parsed;
    parsed.verb = "version";
    parsed.options = options;
    return VersionFeature().run(command, parsed);
}

TEST(VersionFeature, DeclaresTheVersionCommand) {
    std::vector<CommandSpec> commands(1);
    VersionFeature().getPaths(commands);

    ASSERT_EQ(commands.size(), 2U);
    const CommandSpec& declared = commands[1];
    EXPECT_EQ(declared.id, 0);
    EXPECT_EQ(declared.name, "Version");
    EXPECT_EQ(declared.verb, "version");
    EXPECT_EQ(declared.helpText,
              "Show tool version information. Use '-all' or '-display license' to display the "
              "tool's End-User License agreement.");
    EXPECT_EQ(declared.asStr(), "version [-all|-a] [-display|-d (Property1,...)]");
}

TEST(VersionFeature, ShowsThePropertiesThatTheOptionsSelect) {
    struct Row {
        std::map<std::string, std::string> options;
        std::string text;
    };

    const std::string onlyLicense = "- Version Information -\n" + license();
    const Row rows[] = {
        {{}, THREE},
        {{{"-all", ""}}, THREE + license()},
        {{{"-display", "license"}}, onlyLicense},
        {{{"-display", "LICENSE"}}, onlyLicense},
        {{{"-display", "License"}}, onlyLicense},
        {{{"-display", "Name"}}, THREE},
        {{{"-display", "license,Name"}}, THREE},
        {{{"-display", "licens"}}, THREE},
        {{{"-display", ""}}, THREE},
        {{{"-all", ""}, {"-display", "license"}}, THREE + license()},
        {{{"-help", ""}, {"-output", "text"}}, THREE},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(::testing::PrintToString(row.options));
        const auto result = showVersion(row.options);
        EXPECT_EQ(result->outputText(), row.text + "\n");
        EXPECT_EQ(result->getErrorCode(), 0);
    }
}

TEST(VersionFeature, AnswersInEveryFormat) {
    const auto result = showVersion({});

    EXPECT_EQ(result->outputXml(), "<RootList>\n"
                                   "<Version_Information>\n"
                                   "\t<Name>Norvo(R) Tavik</Name>\n"
                                   "\t<Version>3.0.14</Version>\n"
                                   "\t<Description>Interact and configure Norvo SSDs."
                                   "</Description>\n"
                                   "</Version_Information>\n"
                                   "</RootList>\n");
    EXPECT_EQ(result->outputJson(), "{\n"
                                    "\t\"Version Information\":\n"
                                    "\t{\n"
                                    "\t\t\"Name\":\"Norvo(R) Tavik\",\n"
                                    "\t\t\"Version\":\"3.0.14\",\n"
                                    "\t\t\"Description\":\"Interact and configure Norvo SSDs.\"\n"
                                    "\t}\n"
                                    "}\n");
    EXPECT_EQ(result->outputCSV(), "Version Information,\n"
                                   "Name,Norvo(R) Tavik,Version,3.0.14,"
                                   "Description,Interact and configure Norvo SSDs.,,\n");
    EXPECT_EQ(result->outputEsxXml(),
              "<?xml version=\"1.0\"?>"
              "<output xmlns=\"http://www.vmware.com/Products/ESX/5.0/esxcli/\">"
              "<list type=\"structure\">"
              "<structure typeName=\"KeyValue\">"
              "<field name=\"Attribute Name\"><string>Name</string></field>"
              "<field name=\"Value\"><string>Norvo(R) Tavik</string></field></structure>"
              "<structure typeName=\"KeyValue\">"
              "<field name=\"Attribute Name\"><string>Version</string></field>"
              "<field name=\"Value\"><string>3.0.14</string></field></structure>"
              "<structure typeName=\"KeyValue\">"
              "<field name=\"Attribute Name\"><string>Description</string></field>"
              "<field name=\"Value\"><string>Interact and configure Norvo SSDs.</string></field>"
              "</structure>"
              "</list></output>");
}

TEST(VersionFeature, HasALicenseThatEveryFormatShowsAsItStands) {
    const std::string heading = LICENSE_HEADING;
    const std::string agreement = LICENSE_AGREEMENT;

    ASSERT_FALSE(heading.empty());
    EXPECT_EQ(heading.back(), '\n');
    EXPECT_NE(agreement.find("Norvo"), std::string::npos);
    EXPECT_EQ((heading + agreement).find_first_of("<>&\"\\\t"), std::string::npos);
}

TEST(VersionFeature, HasNoCodeForAnotherId) {
    CommandSpec command;
    command.id = 1;

    const auto result = VersionFeature().run(command, {});

    EXPECT_EQ(result->getErrorCode(), 3);
    EXPECT_EQ(result->outputText(), "Error: CommandSpecId 1 of Feature Version is not supported in "
                                    "the current context.");
}

TEST(VersionFeature, IsReachedThroughTheFramework) {
    struct Row {
        std::vector<std::string> line;
        std::string text;
    };

    const Row rows[] = {
        {{"version"}, THREE + "\n"},
        {{"VERSION", "-A"}, THREE + license() + "\n"},
        {{"version", "-d", "LICENSE"}, "- Version Information -\n" + license() + "\n"},
        {{"version", "-display", "license,Name"}, THREE + "\n"},
        {{"version", "-all", "-display", "license"},
         "Syntax Error: Options 'all' and 'display' cannot be used together."},
        {{"version", "-display"}, "Syntax Error: A value is required for the option 'display'."},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(::testing::PrintToString(row.line));
        Framework::tearDown();
        Framework::getInstance().addFeature("Version", std::make_unique<VersionFeature>());
        EXPECT_EQ(Framework::getInstance().execute(row.line)->outputText(), row.text);
    }
    Framework::tearDown();
}

}  // namespace
}  // namespace cli::version
