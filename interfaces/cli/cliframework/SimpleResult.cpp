#include "interfaces/cli/cliframework/SimpleResult.h"

#include <algorithm>
#include <utility>

namespace cli::framework {

namespace {

std::string onOneLine(std::string text) {
    std::replace(text.begin(), text.end(), '\n', ' ');
    return text;
}

}  // namespace

SimpleResult::SimpleResult(std::string text) : text(std::move(text)) {}

std::string SimpleResult::outputText() const {
    return text;
}

std::string SimpleResult::outputXml() const {
    return "<Result>" + text + "</Result>\n";
}

std::string SimpleResult::outputEsxXml() const {
    return std::string(ESX_HEAD) + ESX_STRING + text + ESX_STRING_END + ESX_END;
}

std::string SimpleResult::outputJson() const {
    return "{\n\t\"Result\":\"" + onOneLine(text) + "\"\n}";
}

std::string SimpleResult::outputCSV() const {
    return "Result," + onOneLine(text) + ",\n";
}

}  // namespace cli::framework
