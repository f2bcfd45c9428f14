#include "interfaces/orveli/identification/Identification.h"

#include "core/Exceptions.h"
#include "core/StatusWords.h"
#include "core/Strings.h"
#include "features/DeviceAttributes.h"
#include "features/FeatureStatuses.h"

#include <algorithm>

namespace orvel::interfaces::orveli::identification {

using core::Device;
using core::Status;
namespace attributes = orvel::features::device_attributes;

namespace {

bool isTextByte(std::uint8_t byte) {
    constexpr std::uint8_t FIRST_PRINTABLE = 0x20;
    constexpr std::uint8_t LAST_PRINTABLE = 0x7E;
    return byte == 0 || (byte >= FIRST_PRINTABLE && byte <= LAST_PRINTABLE);
}

Status fail(Device& device, const Status& status) {
    store(device, attributes::ErrorString(), status.getMessage());
    store(device, attributes::DriverCommunicationError(),
          static_cast<std::uint32_t>(status.getCode()));
    return status;
}

}  // namespace

void storeText(Device& device, const core::Attribute& descriptor, const std::string& text) {
    if (!text.empty()) store(device, descriptor, text);
}

void storeNumber(Device& device, core::Attribute descriptor, std::uint64_t number) {
    const Status status = descriptor.setValueFromText(core::strings::toString(number));
    if (status == Status()) device.setAttribute(descriptor);
}

void requireText(const core::Payload& structure, protocols::Fields texts) {
    for (const protocols::Field& field : texts) {
        const core::Payload bytes = protocols::readBytes(structure, field);
        if (!std::all_of(bytes.data(), bytes.data() + bytes.size(), isTextByte))
            throw core::withWords(orvel::features::statuses::dataRetrievalFailed(),
                                  "The Identify data make no sense.");
    }
}

Status attempt(Device& device, const std::function<void()>& step) {
    try {
        step();
    } catch (const Status& status) {
        return fail(device, status);
    } catch (...) {
        return fail(device, core::withWords(orvel::features::statuses::dataRetrievalFailed(),
                                            core::statusOfCurrentException().getMessage()));
    }
    return {};
}

}  // namespace orvel::interfaces::orveli::identification
