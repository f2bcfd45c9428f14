#include "interfaces/orveli/identification/Identification.h"

#include "core/Exceptions.h"
#include "core/StatusWords.h"
#include "core/Strings.h"
#include "features/DeviceAttributes.h"
#include "features/FeatureStatuses.h"

namespace orvel::interfaces::orveli::identification {

using core::Device;
using core::Status;
namespace attributes = orvel::features::device_attributes;

namespace {

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
