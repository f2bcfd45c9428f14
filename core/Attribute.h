// A named, typed value with a text for display.
#pragma once

#include "core/Payload.h"
#include "core/Status.h"

#include <cstdint>
#include <string>
#include <vector>

namespace orvel::core {

/// What the tool-kit knows of a drive, or hands to a job as a property. The bytes of a value
/// follow its type word (see AttributeTypes.h): integers little-endian, a string with a
/// terminating zero byte, a list of strings as its "~"-joined text with one.
class Attribute {
public:
    Attribute() = default;

    /// A blank descriptor: empty description, empty value.
    Attribute(std::string name, std::string displayName, std::string type);

    // Name, type word and value.
    Attribute(std::string name, const char* value);
    Attribute(std::string name, const std::string& value);
    Attribute(std::string name, bool value);
    Attribute(std::string name, std::int8_t value);
    Attribute(std::string name, std::int16_t value);
    Attribute(std::string name, std::int32_t value);
    Attribute(std::string name, std::int64_t value);
    Attribute(std::string name, std::uint8_t value);
    Attribute(std::string name, std::uint16_t value);
    Attribute(std::string name, std::uint32_t value);
    Attribute(std::string name, std::uint64_t value);
    Attribute(std::string name, const Payload& value);                     ///< "bytepointer"
    Attribute(std::string name, const std::vector<std::uint64_t>& value);  ///< "list_uint64"
    Attribute(std::string name, const std::vector<std::string>& value);    ///< "vectorOfStrings"
    Attribute(std::string name, const std::vector<Payload>& value);        ///< "vectorOfPayloads"

    // Store the bytes of a value; the type word stays.
    void setValue(const char* value);
    void setValue(const std::string& value);
    void setValue(bool value);
    void setValue(std::int8_t value);
    void setValue(std::int16_t value);
    void setValue(std::int32_t value);
    void setValue(std::int64_t value);
    void setValue(std::uint8_t value);
    void setValue(std::uint16_t value);
    void setValue(std::uint32_t value);
    void setValue(std::uint64_t value);
    void setValue(const Payload& value);
    void setValue(const std::vector<std::uint64_t>& value);
    void setValue(const std::vector<std::string>& value);
    void setValue(const std::vector<Payload>& value);

    /// Stores a value given as text, checked by its form only. A refused text leaves the
    /// attribute blank and gives code 40, category 0.
    Status setValueFromText(const std::string& text);

    /// The value as text, by type word; empty for an unknown word.
    std::string valueAsString() const;

    const std::string& getName() const { return name; }

    const std::string& getDisplayName() const { return displayName; }

    const std::string& getDescription() const { return description; }

    const std::string& getType() const { return type; }

    const Payload& getPayload() const { return value; }

    void setDisplayName(std::string text) { displayName = std::move(text); }

    void setDescription(std::string text) { description = std::move(text); }

private:
    std::string name;
    std::string displayName;
    std::string description;
    Payload value;
    std::string type;
};

}  // namespace orvel::core
