#include "interfaces/orveli/jobs/SmartAttributes.h"

#include "features/DeviceAttributes.h"
#include "features/FeatureStatuses.h"
#include "interfaces/orveli/access/AtaAccess.h"
#include "protocols/ata/Checksum.h"
#include "protocols/ata/Smart.h"
#include "protocols/ata/Structures.h"

#include <algorithm>
#include <map>

namespace orvel::interfaces::orveli::jobs {

using core::Device;
using core::Payload;
using protocols::readEntry;
using protocols::readNumber;
namespace attributes = orvel::features::device_attributes;
namespace ata = protocols::ata;

namespace {

void requireChecksum(const Payload& data) {
    if (!ata::isChecksumRight(data)) throw orvel::features::statuses::dataRetrievalFailed();
}

std::map<std::uint8_t, std::uint8_t> readThresholds(Device& device) {
    std::map<std::uint8_t, std::uint8_t> thresholds;
    const auto answer = ata_access::ask(device, ata::smartReadThresholds());
    if (!answer.returned.isSuccess() || answer.data.size() < ata::smart_thresholds::SIZE) {
        return thresholds;
    }
    requireChecksum(answer.data);
    for (std::uint32_t i = 0; i < ata::smart_thresholds::THRESHOLDS.count; ++i) {
        const Payload entry = readEntry(answer.data, ata::smart_thresholds::THRESHOLDS, i);
        const auto id = static_cast<std::uint8_t>(readNumber(entry, ata::smart_threshold::Id));
        thresholds[id] =
            static_cast<std::uint8_t>(readNumber(entry, ata::smart_threshold::Threshold));
    }
    return thresholds;
}

SmartAttribute readAttribute(const Payload& entry) {
    SmartAttribute attribute;
    attribute.id = static_cast<std::uint8_t>(readNumber(entry, ata::smart_attribute::Id));
    attribute.flags =
        static_cast<std::uint16_t>(readNumber(entry, ata::smart_attribute::StatusFlags));
    attribute.normalized =
        static_cast<std::uint8_t>(readNumber(entry, ata::smart_attribute::Current));
    attribute.worst = static_cast<std::uint8_t>(readNumber(entry, ata::smart_attribute::Worst));
    attribute.raw = readNumber(entry, ata::smart_attribute::Raw);
    return attribute;
}

}  // namespace

bool SmartAttribute::isPreFailure() const {
    return (flags & ata::smart_attribute_flags::PRE_FAILURE) != 0;
}

std::vector<SmartAttribute> readSmartAttributes(Device& device) {
    const std::string enabled = attributes::SMARTEnabled().getName();
    if (device.hasAttribute(enabled) && !device.isSet(attributes::SMARTEnabled()))
        throw orvel::features::statuses::smartNotEnabled();
    const Payload data = ata_access::read(device, ata::smartReadData());
    requireChecksum(data);
    const auto thresholds = readThresholds(device);
    std::vector<SmartAttribute> found;
    for (std::uint32_t i = 0; i < ata::smart_data::ATTRIBUTES.count; ++i) {
        SmartAttribute attribute = readAttribute(readEntry(data, ata::smart_data::ATTRIBUTES, i));
        if (attribute.id == 0) continue;
        const auto threshold = thresholds.find(attribute.id);
        if (threshold != thresholds.end()) attribute.threshold = threshold->second;
        found.push_back(attribute);
    }
    return found;
}

const SmartAttribute* findAttribute(const std::vector<SmartAttribute>& attributes,
                                    std::uint8_t id) {
    const auto found = std::find_if(attributes.begin(), attributes.end(),
                                    [&](const SmartAttribute& one) { return one.id == id; });
    return found == attributes.end() ? nullptr : &*found;
}

}  // namespace orvel::interfaces::orveli::jobs
