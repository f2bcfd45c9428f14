#include "core/AttributeHolder.h"

#include <algorithm>
#include <utility>

namespace orvel::core {

namespace {

/// No bytes for an attribute that is not there.
Payload valueOf(const AttributeTable& attributes, const Attribute& descriptor) {
    const Attribute* found = attributes.find(descriptor.getName());
    return found == nullptr ? Payload() : found->getPayload();
}

std::uint64_t littleEndian(const Payload& bytes, std::uint32_t width) {
    std::uint64_t number = 0;
    for (std::uint32_t i = std::min(bytes.size(), width); i > 0; --i)
        number = number << 8 | *bytes.at(i - 1);
    return number;
}

/// Copies whose values have buffers of their own: copies of a payload share one.
AttributeTable deepCopyOf(const AttributeTable& originals) {
    AttributeTable copies;
    for (Attribute attribute : originals) {
        const Payload& bytes = attribute.getPayload();
        attribute.setValue(Payload(bytes.data(), bytes.size()));
        copies.set(std::move(attribute));
    }
    return copies;
}

}  // namespace

AttributeHolder::AttributeHolder(const AttributeHolder& other)
    : attributes(deepCopyOf(other.attributes)) {}

AttributeHolder& AttributeHolder::operator=(const AttributeHolder& other) {
    attributes = deepCopyOf(other.attributes);
    return *this;
}

Attribute AttributeHolder::getAttribute(const Attribute& attribute) const {
    const Attribute* found = attributes.find(attribute.getName());
    return found == nullptr ? attribute : *found;
}

std::string AttributeHolder::readText(const Attribute& descriptor) const {
    const Payload value = valueOf(attributes, descriptor);
    if (value.size() == 0) return {};
    return {value.data(), value.data() + value.size() - 1};
}

std::uint64_t AttributeHolder::readUnsigned64(const Attribute& descriptor) const {
    return littleEndian(valueOf(attributes, descriptor), sizeof(std::uint64_t));
}

std::int32_t AttributeHolder::readSigned32(const Attribute& descriptor, std::int32_t absent) const {
    const Payload value = valueOf(attributes, descriptor);
    if (value.size() == 0) return absent;
    return static_cast<std::int32_t>(littleEndian(value, sizeof(std::int32_t)));
}

bool AttributeHolder::isSet(const Attribute& descriptor) const {
    const Payload value = valueOf(attributes, descriptor);
    return value.size() > 0 && *value.at(0) == 1;
}

}  // namespace orvel::core
