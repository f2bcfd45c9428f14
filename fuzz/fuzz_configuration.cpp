// The bytes of the configuration file to the system feature and back to the file. What stands
// behind the last byte 0xFF of the input is not of the file: it is the log file that is then set.

#include "core/Files.h"
#include "core/XmlConverter.h"
#include "core/xml/XmlObject.h"
#include "fuzz/FuzzSupport.h"
#include "interfaces/cli/cliframework/CliFrameworkTypes.h"
#include "tool/SystemFeature.h"
#include "tool/ToolConfiguration.h"

#include <fstream>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace {

using cli::framework::CommandSpec;
using cli::framework::ParsedCommand;
using orvel::core::XmlConverter;
using tavik::system::SystemFeature;
namespace fuzz = tavik::fuzz;
namespace xml = orvel::core::xml;

constexpr const char* DEFAULTS =
    R"(<?xml version="1.0" encoding="utf-8"?>)"
    R"(<Object category="attributeList" name="TAVIK Config">)"
    R"(<Property category="attribute" displayName="Enable Log" name="EnableLog" size="6")"
    R"( type="string" value="false"/>)"
    R"(<Property category="attribute" displayName="Enable LSI Adapter" name="EnableLSIAdapter")"
    R"( size="6" type="string" value="false"/>)"
    R"(<Property category="attribute" displayName="Log File" name="LogFile" size="20")"
    R"( type="string" value="/var/log/ORVELI.log"/>)"
    R"(</Object>)";

std::string configurationFile() {
    return fuzz::folder() + "tavik_config.xml";
}

void writeFile(std::string_view bytes) {
    std::ofstream file(configurationFile(), std::ios::binary | std::ios::trunc);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

std::string readFile() {
    std::ifstream file(configurationFile(), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

bool isTrueOrFalse(const std::string& value) {
    const std::string lowered = cli::framework::toLower(value);
    return lowered == "true" || lowered == "false";
}

enum class Validity { VALID, NOT_VALID, HARD_TO_TELL };

Validity validityOf(const std::string& text) {
    const auto root = XmlConverter::toXml(text);
    const auto* const object = dynamic_cast<const xml::XmlObject*>(root.get());
    if (object == nullptr || object->getAttribute("name") != "TAVIK Config")
        return Validity::NOT_VALID;
    std::map<std::string, std::string> values;
    for (const auto& property : object->getProperties()) {
        // Other types have their own reading of a value.
        if (property->getAttribute("type") != "string") return Validity::HARD_TO_TELL;
        values[property->getAttribute("name")] = property->getAttribute("value");
    }
    const bool isValid = isTrueOrFalse(values["EnableLog"]) &&
                         isTrueOrFalse(values["EnableLSIAdapter"]) && !values["LogFile"].empty();
    return isValid ? Validity::VALID : Validity::NOT_VALID;
}

std::string showAll(SystemFeature& feature) {
    ParsedCommand line;
    line.verb = "show";
    line.options["-all"];
    line.targets["-system"];
    const auto result = feature.run(CommandSpec(2, "System", "show", ""), line);
    fuzz::require(result->getErrorCode() == 0, "the settings can be shown");
    return fuzz::render(*result);
}

void set(SystemFeature& feature, std::int32_t id, const std::string& name,
         const std::string& value) {
    ParsedCommand line;
    line.verb = "set";
    line.targets["-system"];
    line.properties[name] = value;
    const auto result = feature.run(CommandSpec(id, name, "set", ""), line);
    fuzz::require(result->getErrorCode() == 0, "a setting can be set");
    fuzz::require(fuzz::render(*result) == "Set " + name + " successful.",
                  "a setting that was set is confirmed");
}

/// The start of a run: the file is kept if it is valid and otherwise written anew.
void checkStart(const std::string& before) {
    SystemFeature feature;
    const std::string after = readFile();
    switch (validityOf(before)) {
    case Validity::VALID:
        fuzz::require(after == before, "a valid file is left as it was");
        break;
    case Validity::NOT_VALID:
        fuzz::require(after == DEFAULTS, "a file that is not valid is replaced by the defaults");
        break;
    case Validity::HARD_TO_TELL:
        fuzz::require(after == before || after == DEFAULTS, "a file is kept or replaced");
        break;
    }
    const std::string shown = showAll(feature);
    for (const char* name : {"EnableLog", "EnableLSIAdapter", "LogFile"})
        fuzz::require(shown.find(name) != std::string::npos, "every setting is shown");
}

void checkSet(const std::string& logFile) {
    {
        SystemFeature feature;
        set(feature, 0, "EnableLog", "TRUE");
        set(feature, 1, "LogFile", logFile);
    }
    const std::string after = readFile();
    fuzz::require(validityOf(after) != Validity::NOT_VALID, "a changed file is valid");
    SystemFeature feature;
    fuzz::require(readFile() == after, "a changed file is left as it was");
    showAll(feature);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view input = fuzz::textOf(data, size);
    const auto separator = input.rfind('\xFF');
    const std::string file(input.substr(0, separator));
    std::string logFile = "/no/such/folder/changed.log";
    if (separator != std::string_view::npos) {
        // A word of a command line ends at its first NUL byte, and an empty one is refused.
        logFile = input.substr(separator + 1);
        logFile = logFile.substr(0, logFile.find('\0'));
    }

    writeFile(file);
    static_cast<void>(tavik::configuration::isAdapterEnabled());
    checkStart(file);
    if (!logFile.empty()) checkSet(logFile);
    return 0;
}
