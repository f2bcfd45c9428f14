// The attribute operations that devices and partitions share.
#pragma once

#include "core/Attribute.h"
#include "core/AttributeTable.h"

#include <cstdint>
#include <string>

namespace orvel::core {

/// A bag of named attributes, whose copies share no byte of a value. The readers below take the
/// catalogue's blank descriptor of an attribute, so that no key is spelled outside the catalogue.
class AttributeHolder {
public:
    /// A copy of the stored attribute with the argument's name, or of the argument if there is
    /// none.
    Attribute getAttribute(const Attribute& attribute) const;

    bool hasAttribute(const std::string& key) const { return attributes.contains(key); }

    /// Adds or replaces.
    void setAttribute(const Attribute& attribute) { attributes.set(attribute); }

    void removeAttribute(const std::string& key) { attributes.remove(key); }

    AttributeTable& getAttributes() { return attributes; }

    const AttributeTable& getAttributes() const { return attributes; }

    /// The value's bytes but the last, its NUL; the empty string for no value.
    std::string readText(const Attribute& descriptor) const;

    /// The value as a little-endian number, of which at most as many bytes are read as the result
    /// has. No value reads as 0, or as `absent`.
    std::uint64_t readUnsigned64(const Attribute& descriptor) const;
    std::int32_t readSigned32(const Attribute& descriptor, std::int32_t absent) const;

    /// Whether there is a value and its first byte is 1.
    bool isSet(const Attribute& descriptor) const;

protected:
    AttributeHolder() = default;
    AttributeHolder(const AttributeHolder& other);
    AttributeHolder(AttributeHolder&&) = default;
    AttributeHolder& operator=(const AttributeHolder& other);
    AttributeHolder& operator=(AttributeHolder&&) = default;
    ~AttributeHolder() = default;

private:
    AttributeTable attributes;
};

}  // namespace orvel::core
