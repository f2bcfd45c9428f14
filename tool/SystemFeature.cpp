#include "tool/SystemFeature.h"

#include "core/Files.h"
#include "core/XmlConverter.h"
#include "core/xml/Vocabulary.h"
#include "interfaces/cli/cliframework/ErrorResult.h"
#include "interfaces/cli/cliframework/NotImplementedErrorResult.h"
#include "interfaces/cli/cliframework/ObjectListResult.h"
#include "interfaces/cli/cliframework/PropertyListResult.h"
#include "interfaces/cli/cliframework/SimpleResult.h"
#include "tool/ToolConfiguration.h"

#include <algorithm>
#include <iterator>
#include <optional>
#include <string>
#include <unordered_set>
#include <utility>
#include <vector>

namespace tavik::system {

namespace {

using namespace cli::framework;
using orvel::core::Attribute;
using orvel::core::AttributeTable;
using orvel::core::XmlConverter;
namespace files = orvel::core::files;
namespace xml = orvel::core::xml;

constexpr bool REQUIRED = true;
constexpr bool VALUE_REQUIRED = true;

/// What `show` prints without options; compared ignoring case.
constexpr const char* DEFAULT_DISPLAY_LIST[] = {"enableLog", "logFile"};

CommandPart targetSystem() {
    CommandPart part;
    part.name = "-system";
    part.required = REQUIRED;
    part.helpText = "System target is required.";
    return part;
}

bool isTrueOrFalse(const std::string& text) {
    return stringsIEqual(text, "true") || stringsIEqual(text, "false");
}

bool isSetting(const std::string& name) {
    return name == configuration::ENABLE_LOG || name == configuration::ENABLE_LSI_ADAPTER ||
           name == configuration::LOG_FILE;
}

/// The settings that `text` holds, or nothing if it is no valid configuration.
std::optional<AttributeTable> readSettings(const std::string& text) {
    if (text.empty()) return std::nullopt;
    const auto object = configuration::parse(text);
    if (object == nullptr) return std::nullopt;
    if (object->getAttribute(xml::tags::Name) != configuration::ROOT_NAME) return std::nullopt;

    AttributeTable settings = XmlConverter::toAttributes(*object);
    const auto value = [&settings](const char* setting) {
        return configuration::valueOf(settings, setting);
    };
    // An absent setting reads as empty, which none of the three may be.
    if (!isTrueOrFalse(value(configuration::ENABLE_LOG))) return std::nullopt;
    if (!isTrueOrFalse(value(configuration::ENABLE_LSI_ADAPTER))) return std::nullopt;
    if (value(configuration::LOG_FILE).empty()) return std::nullopt;
    return settings;
}

/// Tells of each wanted name once, in any case, that `properties` has no value for it. A line may
/// name tens of thousands.
void insertUnknown(const std::vector<std::string>& wanted, PropertyListResult& properties) {
    std::unordered_set<std::string> told;
    for (auto property = properties.propertiesBegin(); property != properties.propertiesEnd();
         ++property) {
        told.insert(toLower(property->first));
    }
    for (const std::string& name : wanted) {
        if (told.insert(toLower(name)).second) properties.insert(name, "Property does not exist.");
    }
}

}  // namespace

SystemFeature::SystemFeature() : name("System") {
    configObject.set(configuration::EnableLog());
    configObject.set(configuration::EnableLSIAdapter());
    configObject.set(configuration::LogFile());
    loadConfig();
}

void SystemFeature::getPaths(std::vector<CommandSpec>& commands) {
    CommandSpec enableLog(0, configuration::ENABLE_LOG, VERB_SET,
                          "Enable/Disable TAVIK tool debug log.");
    enableLog.addOption(OPTION_HELP);
    enableLog.addTarget(targetSystem());
    enableLog.addProperty(configuration::ENABLE_LOG, REQUIRED, "'true'|'false'", VALUE_REQUIRED,
                          "true = enable TAVIK logging. false = disable TAVIK logging.");
    commands.push_back(std::move(enableLog));

    CommandSpec logFile(1, configuration::LOG_FILE, VERB_SET,
                        "Set the path and filename of the TAVIK log file.");
    logFile.addOption(OPTION_HELP);
    logFile.addTarget(targetSystem());
    logFile.addProperty(configuration::LOG_FILE, REQUIRED, "file name", VALUE_REQUIRED,
                        "Valid directory path and file name");
    commands.push_back(std::move(logFile));

    CommandSpec show(2, "System", VERB_SHOW, "Show TAVIK configuration settings.");
    show.addOption(OPTION_HELP);
    show.addOption(OPTION_DISPLAY);
    show.addOption(OPTION_ALL);
    show.addTarget(targetSystem());
    commands.push_back(std::move(show));
}

std::unique_ptr<ResultBase> SystemFeature::run(const CommandSpec& command,
                                               const ParsedCommand& parsed) {
    switch (command.id) {
    case 0:
        return setProperty(configuration::EnableLog(), parsed);
    case 1:
        return setProperty(configuration::LogFile(), parsed);
    case 2:
        return showConfig(parsed);
    // Intended: no command carries this id. The adapter is switched by editing the file.
    case 3:
        return setProperty(configuration::EnableLSIAdapter(), parsed);
    default:
        return std::make_unique<NotImplementedErrorResult>(command.id, name);
    }
}

void SystemFeature::loadConfig() {
    if (auto settings = readSettings(configuration::readText())) {
        configObject = std::move(*settings);
        return;
    }
    saveConfig();
}

bool SystemFeature::saveConfig() const {
    const auto object = XmlConverter::toXml(configObject);
    object->setAttribute(xml::tags::Name, configuration::ROOT_NAME);
    // Of a linked file, too, a crash must leave the old or the new one.
    return files::replace(files::resolve(configuration::getConfigPath()), object->toString());
}

std::unique_ptr<ResultBase> SystemFeature::setProperty(Attribute descriptor,
                                                       const ParsedCommand& parsed) {
    const auto property = parsed.properties.find(descriptor.getName());
    if (property == parsed.properties.end()) {
        return std::make_unique<ErrorResult>(7, "Could not find property for: " +
                                                    descriptor.getName());
    }
    const auto& [key, value] = *property;
    if (stringsIEqual(key, configuration::ENABLE_LOG) ||
        stringsIEqual(key, configuration::ENABLE_LSI_ADAPTER)) {
        if (!isTrueOrFalse(value)) {
            return std::make_unique<ErrorResult>(
                6,
                "Invalid value for " + key + " property. Supported values are 'true' and 'false'.");
        }
    } else if (!stringsIEqual(key, configuration::LOG_FILE)) {
        return std::make_unique<ErrorResult>(7, "Invalid property");
    }
    descriptor.setValue(value);
    return writeConfig(descriptor);
}

std::unique_ptr<ResultBase> SystemFeature::writeConfig(const Attribute& descriptor) {
    if (isSetting(descriptor.getName())) configObject.set(descriptor);
    if (!saveConfig()) {
        return std::make_unique<ErrorResult>(5, "Failed to write TAVIK configuration file. " +
                                                    configuration::getConfigPath());
    }
    return std::make_unique<SimpleResult>("Set " + descriptor.getName() + " successful.");
}

std::unique_ptr<ResultBase> SystemFeature::showConfig(const ParsedCommand& parsed) const {
    std::vector<std::string> wanted(std::begin(DEFAULT_DISPLAY_LIST),
                                    std::end(DEFAULT_DISPLAY_LIST));
    const auto display = parsed.options.find(OPTION_DISPLAY.name);
    const bool displayGiven = display != parsed.options.end();
    if (displayGiven) wanted = splitNonBlank(display->second, ',');
    const bool all = parsed.options.contains(OPTION_ALL.name);

    PropertyListResult properties;
    for (const Attribute& setting : configObject) {
        const bool isWanted =
            std::any_of(wanted.begin(), wanted.end(), [&setting](const std::string& wantedName) {
                return stringsIEqual(wantedName, setting.getName());
            });
        if (all || isWanted) {
            properties.insert(setting.getName(), setting.valueAsString());
        }
    }
    if (displayGiven) insertUnknown(wanted, properties);
    auto result = std::make_unique<ObjectListResult>();
    result->insert(configuration::ROOT_NAME, properties);
    return result;
}

}  // namespace tavik::system
