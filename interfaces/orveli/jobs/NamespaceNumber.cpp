#include "interfaces/orveli/jobs/NamespaceNumber.h"

#include "core/NumberText.h"
#include "features/FeatureStatuses.h"

#include <algorithm>

namespace orvel::interfaces::orveli::jobs {

namespace {

constexpr int DECIMAL = 10;
constexpr int HEXADECIMAL = 16;

bool isDecimal(const std::string& text) {
    return std::ranges::all_of(text, [](char one) { return one >= '0' && one <= '9'; });
}

}  // namespace

std::uint32_t readNamespaceNumber(const std::string& text) {
    const bool hasPrefix = text.starts_with("0x") || text.starts_with("0X");
    const std::string digits = hasPrefix ? text.substr(2) : text;
    const int base = !hasPrefix && isDecimal(digits) ? DECIMAL : HEXADECIMAL;
    const auto number = core::readWhole<std::uint32_t>(digits, base);
    if (!number || *number == 0) throw features::statuses::invalidNamespaceId();
    return *number;
}

}  // namespace orvel::interfaces::orveli::jobs
