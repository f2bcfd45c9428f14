#include "interfaces/cli/cliframework/ResultText.h"

#include "interfaces/cli/cliframework/CliFrameworkTypes.h"

#include <algorithm>

namespace cli::framework {

void appendFormat(std::string& text, std::string_view format, std::string_view argument) {
    constexpr std::string_view PLACE = "%s";
    const auto place = format.find(PLACE);
    append(text, format.substr(0, place), argument, format.substr(place + PLACE.size()));
}

std::string toTag(std::string name) {
    std::replace(name.begin(), name.end(), ' ', '_');
    return name;
}

std::string toApostrophes(std::string text) {
    std::replace(text.begin(), text.end(), '"', '\'');
    return text;
}

void appendJsonValue(std::string& text, std::string_view value) {
    if (stringIsNumeric(value, false)) {
        text += value;
    } else if (stringsIEqual(value, "true")) {
        text += "true";
    } else if (stringsIEqual(value, "false")) {
        text += "false";
    } else {
        text += '"';
        const auto start = text.insert(text.end(), value.begin(), value.end());
        std::replace(start, text.end(), '"', '\'');
        text += '"';
    }
}

}  // namespace cli::framework
