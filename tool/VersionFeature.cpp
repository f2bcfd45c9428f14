#include "tool/VersionFeature.h"

#include "interfaces/cli/cliframework/NotImplementedErrorResult.h"
#include "interfaces/cli/cliframework/ObjectListResult.h"
#include "interfaces/cli/cliframework/PropertyListResult.h"
#include "tool/LicenseText.h"

namespace cli::version {

using namespace cli::framework;

namespace {

constexpr const char* TOOL_NAME = "Norvo(R) Tavik";
constexpr const char* TOOL_VERSION = "3.0.14";
constexpr const char* TOOL_DESCRIPTION = "Interact and configure Norvo SSDs.";

std::string license() {
    return stringFormat("%s\n%s %s\n\n%s", LICENSE_HEADING, TOOL_NAME, TOOL_VERSION,
                        LICENSE_AGREEMENT);
}

/// Intended: only the whole value counts, and any other value is ignored without a word.
bool asksForLicenseOnly(const ParsedCommand& parsed) {
    const auto display = parsed.options.find(OPTION_DISPLAY.name);
    return display != parsed.options.end() && stringsIEqual(display->second, "license");
}

}  // namespace

VersionFeature::VersionFeature() : name("Version") {}

void VersionFeature::getPaths(std::vector<CommandSpec>& commands) {
    CommandSpec& version = commands.emplace_back(
        0, "Version", VERB_VERSION,
        "Show tool version information. Use '-all' or '-display license' to display the tool's "
        "End-User License agreement.");
    version.addOption(OPTION_ALL);
    version.addOption(OPTION_DISPLAY);
}

std::unique_ptr<ResultBase> VersionFeature::run(const CommandSpec& command,
                                                const ParsedCommand& parsed) {
    if (command.id == 0) return showVersion(parsed);
    return std::make_unique<NotImplementedErrorResult>(command.id, name);
}

std::unique_ptr<ResultBase> VersionFeature::showVersion(const ParsedCommand& parsed) {
    const bool all = parsed.options.contains(OPTION_ALL.name);
    const bool licenseOnly = !all && asksForLicenseOnly(parsed);
    PropertyListResult properties;
    if (!licenseOnly) {
        properties.insert("Name", TOOL_NAME);
        properties.insert("Version", TOOL_VERSION);
        properties.insert("Description", TOOL_DESCRIPTION);
    }
    if (all || licenseOnly) properties.insert("License", license());

    auto result = std::make_unique<ObjectListResult>();
    result->insert("Version Information", properties);
    return result;
}

}  // namespace cli::version
