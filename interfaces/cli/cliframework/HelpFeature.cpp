#include "interfaces/cli/cliframework/HelpFeature.h"

#include "interfaces/cli/cliframework/Framework.h"
#include "interfaces/cli/cliframework/HelpResult.h"
#include "interfaces/cli/cliframework/TraceObject.h"

#include <algorithm>
#include <utility>

namespace cli::framework {

namespace {

std::string propertyValue(const ParsedCommand& parsed, const std::string& key) {
    const auto entry = parsed.properties.find(key);
    return entry == parsed.properties.end() ? std::string() : entry->second;
}

}  // namespace

HelpFeature::HelpFeature() : name("Help") {}

HelpFeature::HelpFeature(CommandSpec command) : command(std::move(command)) {}

void HelpFeature::getPaths(std::vector<CommandSpec>& commands) {
    const TraceObject trace(__FILE__, __func__, __LINE__);
    CommandSpec& help = commands.emplace_back(
        0, "Help", VERB_HELP,
        "Retrieve a list of supported commands. Filter the results by providing a specific verb or "
        "command name. By default, if the filter is specific enough to indicate a single command, "
        "detailed help will be displayed for that command.");
    help.addProperty(PROPERTY_NAME);
    help.addProperty(PROPERTY_VERB);
}

std::unique_ptr<ResultBase> HelpFeature::run(const CommandSpec&, const ParsedCommand& parsed) {
    const TraceObject trace(__FILE__, __func__, __LINE__);
    auto result = std::make_unique<HelpResult>();
    if (parsed.verb != VERB_HELP) {
        result->push_back(command);
        result->setShowFull(true);
        return result;
    }

    const std::string verbFilter = propertyValue(parsed, PROPERTY_VERB.name);
    const std::string nameFilter = propertyValue(parsed, PROPERTY_NAME.name);
    std::vector<CommandRef> commands = Framework::getInstance().buildCommands();

    // Pointers are sorted in place of the commands: the same order for a fraction of the work.
    std::vector<CommandRef*> sorted;
    sorted.reserve(commands.size());
    for (CommandRef& entry : commands)
        sorted.push_back(&entry);
    std::sort(sorted.begin(), sorted.end(),
              [](const CommandRef* a, const CommandRef* b) { return SortOption(*a, *b); });

    for (CommandRef* entry : sorted) {
        if (!verbFilter.empty() && !stringsIEqual(verbFilter, entry->verb)) continue;
        if (!nameFilter.empty() && !matchCommandName(nameFilter, entry->name)) continue;
        result->push_back(static_cast<CommandSpec&&>(std::move(*entry)));
    }
    if (result->getCount() == 1) result->setShowFull(true);
    return result;
}

bool HelpFeature::matchCommandName(const std::string& filter, const std::string& commandName) {
    return toLower(commandName).find(toLower(filter)) != std::string::npos;
}

}  // namespace cli::framework
