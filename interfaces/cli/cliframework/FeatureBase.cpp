#include "interfaces/cli/cliframework/FeatureBase.h"

#include "interfaces/cli/cliframework/SyntaxErrorMissingValueResult.h"
#include "interfaces/cli/cliframework/SyntaxErrorResult.h"
#include "interfaces/cli/cliframework/SyntaxErrorUnexpectedValueResult.h"
#include "interfaces/cli/cliframework/TraceObject.h"

#include <algorithm>
#include <cctype>
#include <string>
#include <string_view>

namespace cli::framework {

namespace {

int orderOf(char character) {
    return std::tolower(static_cast<unsigned char>(character));
}

// Intended: "esx" is accepted though the refusal does not offer it, and "csv" is refused though
// results can be rendered so.
bool isOutputWord(std::string_view value) {
    return stringsIEqual(value, OUTPUT_NVMXML) || stringsIEqual(value, OUTPUT_TEXT) ||
           stringsIEqual(value, OUTPUT_ESX) || stringsIEqual(value, OUTPUT_JSON);
}

/// The name that a command is ordered by. `Framework::buildCommands` gives every command at least
/// two options; one that did not come from there may have fewer.
std::string_view sortKey(const CommandRef& command) {
    if (command.options.size() < 2) return {};
    return command.options[1].name;
}

}  // namespace

std::unique_ptr<ResultBase> FeatureBase::validate(const ParsedCommand& parsed) {
    const TraceObject trace(__FILE__, __func__, __LINE__);
    const auto& options = parsed.options;
    const auto all = options.find(OPTION_ALL.name);
    const auto display = options.find(OPTION_DISPLAY.name);
    const auto help = options.find(OPTION_HELP.name);
    const auto output = options.find(OPTION_OUTPUT.name);

    if (all != options.end() && display != options.end()) {
        return std::make_unique<SyntaxErrorResult>(
            "Options 'all' and 'display' cannot be used together.");
    }
    if (all != options.end() && !all->second.empty()) {
        return std::make_unique<SyntaxErrorUnexpectedValueResult>(TokenType::Option, "all");
    }
    if (display != options.end() && display->second.empty()) {
        return std::make_unique<SyntaxErrorMissingValueResult>(TokenType::Option, "display");
    }
    if (help != options.end() && !help->second.empty()) {
        return std::make_unique<SyntaxErrorUnexpectedValueResult>(TokenType::Option, "help");
    }
    if (output != options.end() && !isOutputWord(output->second)) {
        return std::make_unique<SyntaxErrorResult>(
            stringFormat("Option 'output' expects '%s', '%s' or '%s'.", OUTPUT_TEXT, OUTPUT_NVMXML,
                         OUTPUT_JSON));
    }
    return nullptr;
}

bool SortOption(const CommandRef& a, const CommandRef& b) {
    const std::string_view x = sortKey(a);
    const std::string_view y = sortKey(b);
    if (x == y) return false;
    const auto [inX, inY] =
        std::mismatch(x.begin(), x.end(), y.begin(), y.end(),
                      [](char left, char right) { return orderOf(left) == orderOf(right); });
    if (inX == x.end() || inY == y.end()) return x.size() < y.size();
    return orderOf(*inX) > orderOf(*inY);
}

}  // namespace cli::framework
