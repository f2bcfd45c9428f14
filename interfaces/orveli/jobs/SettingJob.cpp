#include "interfaces/orveli/jobs/SettingJob.h"

#include "core/NumberText.h"
#include "core/Strings.h"
#include "core/xml/Vocabulary.h"
#include "features/FeatureStatuses.h"

#include <optional>

namespace orvel::interfaces::orveli::jobs {

using core::Attribute;
using core::Status;
using core::xml::XmlObject;
namespace strings = core::strings;
namespace tags = core::xml::tags;

namespace {

/// The last property of this name that the request wants set: it is the one that counts.
std::optional<std::string> findRequestedText(const core::xml::XmlElement* request,
                                             const std::string& name) {
    std::optional<std::string> text;
    const auto* root = dynamic_cast<const XmlObject*>(request);
    if (root == nullptr) return text;
    for (const auto& object : root->getObjects()) {
        if (object->getAttribute(tags::Name) != xml::tags::names::Properties) continue;
        for (const auto& property : object->getProperties()) {
            if (property->getAttribute(tags::Name) == name)
                text = property->getAttribute(tags::Value);
        }
    }
    return text;
}

std::optional<std::uint32_t> readNumber(const std::string& text) {
    const bool isHexadecimal = strings::startsWith(text, "0x", true);
    constexpr std::size_t PREFIX = 2;
    return isHexadecimal ? core::readWhole<std::uint32_t>(text.substr(PREFIX), 16)
                         : core::readWhole<std::uint32_t>(text);
}

}  // namespace

SettingJob::SettingJob(const std::string& name, Kind kind, const std::string& title)
    : DriveJob(name, kind, title) {}

std::string SettingJob::textOf(const Attribute& property) const {
    const auto requested = findRequestedText(getRequest(), property.getName());
    return strings::trimmed(requested ? *requested : property.valueAsString());
}

std::uint32_t SettingJob::numberOf(const Attribute& property, const Range& range,
                                   const Status& refusal) const {
    const auto number = readNumber(textOf(property));
    if (!number || *number < range.lowest || *number > range.highest) throw refusal;
    return *number;
}

bool SettingJob::booleanOf(const Attribute& property) const {
    return readBoolean(property, textOf(property));
}

bool isNamed(const Attribute& property, const Attribute& descriptor) {
    return property.getName() == descriptor.getName();
}

void requireName(const Attribute& property, const Attribute& descriptor) {
    if (!isNamed(property, descriptor)) throw features::statuses::invalidProperty();
}

bool readBoolean(const Attribute& descriptor, const std::string& text) {
    if (!strings::isBooleanText(text)) {
        throw core::withWords(features::statuses::invalidProperty(),
                              descriptor.getName() + " must be true or false.");
    }
    return text == "1" || strings::toBool(text);
}

Status successAfterPowerCycle() {
    return core::withWords({}, "Power cycle the drive to apply the change.");
}

}  // namespace orvel::interfaces::orveli::jobs
