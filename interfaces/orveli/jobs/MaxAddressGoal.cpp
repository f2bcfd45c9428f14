#include "interfaces/orveli/jobs/MaxAddressGoal.h"

#include "core/Strings.h"
#include "features/FeatureStatuses.h"
#include "protocols/Field.h"

#include <algorithm>
#include <charconv>

namespace orvel::interfaces::orveli::jobs {

using protocols::Number128;
namespace statuses = features::statuses;
namespace strings = core::strings;

namespace {

constexpr std::uint64_t ALL_PERCENT = 100;
constexpr std::uint64_t BYTES_PER_GIGABYTE = 1'000'000'000;

/// IDEMA LBA1-03: the sectors of a drive of 50 GB, and those of each gigabyte more.
struct CapacityRow {
    std::uint64_t sectorBytes;
    std::uint64_t sectorsOf50Gigabytes;
    std::uint64_t sectorsPerGigabyte;
};

// clang-format off
constexpr CapacityRow CAPACITIES[] = {
//   sector  50 GB     1 GB
    {512,    97696368, 1953504},
    {4096,   12212046, 244188},
};

// clang-format on

Number128 sectorsOf(std::uint64_t gigabytes, std::uint64_t sectorBytes) {
    for (const CapacityRow& row : CAPACITIES) {
        if (row.sectorBytes != sectorBytes) continue;
        // Below 50 GB the line just goes on.
        const std::uint64_t atZero = row.sectorsOf50Gigabytes - 50 * row.sectorsPerGigabyte;
        return Number128(row.sectorsPerGigabyte) * gigabytes + atZero;
    }
    throw statuses::invalidMaxAddressSectorSize();
}

/// Digits that are no number of a drive's: with a sign, all zeroes, or too many.
std::uint64_t readPositive(const std::string& digits) {
    std::uint64_t number = 0;
    const char* end = digits.data() + digits.size();
    const auto result = std::from_chars(digits.data(), end, number);
    if (result.ec != std::errc() || number == 0) throw statuses::invalidMaxAddressValue();
    return number;
}

/// Cuts the unit off, and the blanks before it.
bool takeUnit(std::string& text, const std::string& unit) {
    if (!strings::endsWith(text, unit, true)) return false;
    text.resize(text.size() - unit.size());
    while (!text.empty() && text.back() == ' ')
        text.pop_back();
    return true;
}

}  // namespace

MaxAddressGoal::MaxAddressGoal(const std::string& text) {
    if (strings::equals(text, "native", true)) return;
    std::string digits = text;
    unit = Unit::LBA;
    if (takeUnit(digits, "GB")) {
        unit = Unit::GIGABYTES;
    } else if (takeUnit(digits, "%")) {
        unit = Unit::PERCENT;
    }
    if (!strings::isSignedNumeric(digits)) throw statuses::invalidMaxAddressParameter();
    number = readPositive(digits);
    const bool isTooMuch = unit == Unit::PERCENT && number > ALL_PERCENT;
    if (isTooMuch) throw statuses::invalidMaxAddressValue();
}

std::uint64_t MaxAddressGoal::toLba(std::uint64_t native, std::uint64_t sectorBytes) const {
    const Number128 all = Number128(native) + 1;
    Number128 wanted = 0;
    switch (unit) {
    case Unit::NATIVE:
        return native;
    case Unit::LBA:
        wanted = Number128(number) + 1;
        break;
    case Unit::PERCENT:
        wanted = all * number / ALL_PERCENT;
        break;
    case Unit::GIGABYTES:
        wanted = sectorsOf(number, sectorBytes);
        if (Number128(number) * BYTES_PER_GIGABYTE <= all * sectorBytes)
            wanted = std::min(wanted, all);
        break;
    }
    if (wanted == 0 || wanted > all) throw statuses::invalidMaxAddressValue();
    return static_cast<std::uint64_t>(wanted - 1);
}

}  // namespace orvel::interfaces::orveli::jobs
