#include "core/DeviceIdentifiers.h"

#include "core/GlobalLogging.h"
#include "core/Strings.h"
#include "features/DeviceAttributes.h"

#include <boost/algorithm/string/case_conv.hpp>
#include <boost/endian/conversion.hpp>

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <locale>
#include <system_error>
#include <vector>

namespace orvel::core {

namespace {

namespace device_attributes = features::device_attributes;

constexpr const char* INTERFACE_PREFIX = R"(\\?\)";
constexpr std::size_t INTERFACE_PREFIX_LENGTH = 4;
constexpr std::size_t SHORTEST_DRIVE_ID = 5;
constexpr std::uint32_t SAS_ADDRESS_BYTES = 8;

/// The whole text as a number of this base; nothing for anything else, or for one out of range.
template <class Number>
std::optional<Number> readNumber(const std::string& text, int base) {
    Number number{};
    const char* end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, number, base);
    if (error != std::errc() || rest != end) return std::nullopt;
    return number;
}

/// The text without a trailing class identifier, "{...}", and the separator in front of it.
std::string withoutClass(const std::string& text) {
    const std::size_t brace = text.rfind('{');
    if (brace == std::string::npos || brace == 0) return text;
    return text.substr(0, brace - 1);
}

}  // namespace

std::optional<CsmiIdentifiers> readCsmiIdentifiers(const std::string& text) {
    const std::vector<std::string> parts = strings::split(text, ',');
    if (parts.size() != 2) {
        global_logging::write(
            boost::log::trivial::debug, ORVEL_HERE,
            "Failed to split passed in CSMI string into the two recognized identifiers");
        return std::nullopt;
    }
    const auto address = readNumber<std::uint64_t>(parts[0], 16);
    const auto port = readNumber<std::int32_t>(parts[1], 10);
    if (!address || !port) return std::nullopt;
    // The attribute holds the address in the order of its written digits.
    return CsmiIdentifiers{boost::endian::endian_reverse(*address), *port};
}

bool matches(const Device& device, const CsmiIdentifiers& identifiers) {
    const Attribute address = device.getAttribute(device_attributes::SASAddress());
    return device.isSet(device_attributes::CSMI()) &&
           device.readSigned32(device_attributes::SCSIPortNumber(), 0) == identifiers.scsiPort &&
           address.getPayload().size() == SAS_ADDRESS_BYTES &&
           device.readUnsigned64(device_attributes::SASAddress()) == identifiers.sasAddress;
}

std::optional<std::string> readDriveId(const std::string& text) {
    std::string id = text;
    const bool isInterfacePath = strings::contains(id, INTERFACE_PREFIX, true);
    if (isInterfacePath) std::replace(id.begin(), id.end(), '#', '\\');
    if (id.size() < SHORTEST_DRIVE_ID) return std::nullopt;
    // Intended: nothing may be left, which is what a device without a `PNP String` has.
    if (isInterfacePath) id = withoutClass(id.substr(INTERFACE_PREFIX_LENGTH));
    return boost::algorithm::to_upper_copy(id, std::locale::classic());
}

}  // namespace orvel::core
