// Fields of a structure as properties of an answer.
#pragma once

#include "core/Payload.h"
#include "core/xml/XmlObject.h"
#include "protocols/Field.h"
#include "protocols/nvme/BitField.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>

namespace orvel::interfaces::orveli::jobs::field_report {

// Each throws core::Status by value, code 14, if the structure ends before the field does.

/// A property of the field's name.
void putField(core::xml::XmlObject& section, const core::Payload& structure,
              const protocols::Field& field);
void putFields(core::xml::XmlObject& section, const core::Payload& structure,
               protocols::Fields fields);

/// Also tells the standard's words, for fields whose names are abbreviations.
void putDescribed(core::xml::XmlObject& section, const core::Payload& structure,
                  const protocols::Field& field);

/// "0x" and all digits of a number of up to 8 bytes.
std::string hexText(const core::Payload& structure, const protocols::Field& field);

/// A property "<field>.<bits>" for each row, with its words.
void putBits(core::xml::XmlObject& section, const core::Payload& structure,
             const protocols::Field& field, std::span<const protocols::nvme::BitField> rows);

/// "None" for no temperature, else degrees Celsius.
std::string temperatureText(const std::optional<int>& celsius);

}  // namespace orvel::interfaces::orveli::jobs::field_report
