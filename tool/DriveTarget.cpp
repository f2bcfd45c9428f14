#include "tool/DriveTarget.h"

#include "core/Strings.h"

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace tavik::norvossd {

namespace {

using cli::framework::CommandPart;
using cli::framework::ErrorResult;
using cli::framework::ParsedCommand;
namespace strings = orvel::core::strings;

constexpr std::string_view PHYSICAL_DRIVE = "PHYSICALDRIVE";
constexpr std::size_t LONGEST_NUMBER = 4;
constexpr std::size_t LONGEST_SERIAL_NUMBER = 60;

std::unique_ptr<ErrorResult> refusal(const char* message) {
    return std::make_unique<ErrorResult>(8, message);
}

/// In upper case, whatever locale a library may have set.
char raised(char character) {
    return character >= 'a' && character <= 'z' ? static_cast<char>(character - 'a' + 'A')
                                                : character;
}

/// A leading "-", then digits with at most one "." among them. Intended: no digit is asked for.
bool isDriveNumber(std::string_view text) {
    if (text.starts_with('-')) text.remove_prefix(1);
    return std::all_of(text.begin(), text.end(),
                       [](char c) { return c == '.' || (c >= '0' && c <= '9'); }) &&
           std::count(text.begin(), text.end(), '.') <= 1;
}

}  // namespace

TargetKind kindOfTarget(const std::string& target) {
    if (strings::isNumeric(target)) return TargetKind::index;
    if (strings::contains(target, std::string(PHYSICAL_DRIVE), true)) return TargetKind::path;
    return TargetKind::serialNumber;
}

std::unique_ptr<ErrorResult> getNorvoSSDTarget(const ParsedCommand& parsed, std::string& target,
                                               const CommandPart& part) {
    target.clear();
    const auto entry = parsed.targets.find(part.name);
    if (entry == parsed.targets.end()) {
        if (part.required) return refusal("-norvossd target not found.");
        return nullptr;
    }
    if (entry->second.empty() && part.valueRequired) {
        return refusal("Must specify an norvo ssd index.");
    }
    target = entry->second;
    std::transform(target.begin(), target.end(), target.begin(), raised);
    if (target.empty()) return nullptr;

    switch (kindOfTarget(target)) {
    case TargetKind::index:
        if (target.size() > LONGEST_NUMBER) return refusal("Index Out of Range.");
        break;
    case TargetKind::path: {
        const auto number =
            std::string_view(target).substr(target.find(PHYSICAL_DRIVE) + PHYSICAL_DRIVE.size());
        if (number.size() > LONGEST_NUMBER || !isDriveNumber(number)) {
            return refusal("Invalid Physical Drive Path");
        }
        break;
    }
    case TargetKind::serialNumber:
        if (target.size() > LONGEST_SERIAL_NUMBER) return refusal("Invalid norvossd target");
        break;
    }
    return nullptr;
}

}  // namespace tavik::norvossd
