#include "interfaces/orveli/jobs/FieldReport.h"

#include "core/Strings.h"

namespace orvel::interfaces::orveli::jobs::field_report {

using core::Payload;
using core::xml::XmlObject;
using protocols::Field;

void putField(XmlObject& section, const Payload& structure, const Field& field) {
    section.addValue(field.name, protocols::valueAsText(structure, field));
}

void putFields(XmlObject& section, const Payload& structure, protocols::Fields fields) {
    for (const Field& field : fields)
        putField(section, structure, field);
}

void putDescribed(XmlObject& section, const Payload& structure, const Field& field) {
    section.addProperty(field.name, field.meaning, protocols::valueAsText(structure, field));
}

std::string hexText(const Payload& structure, const Field& field) {
    constexpr std::uint32_t DIGITS_PER_BYTE = 2;
    return "0x" + core::strings::toHexString(protocols::readNumber(structure, field),
                                             static_cast<int>(field.size * DIGITS_PER_BYTE));
}

void putBits(XmlObject& section, const Payload& structure, const Field& field,
             std::span<const protocols::nvme::BitField> rows) {
    for (const auto& row : rows) {
        section.addProperty(std::string(field.name) + "." + row.name, row.meaning,
                            core::strings::toString(readBits(structure, field, row)));
    }
}

std::string temperatureText(const std::optional<int>& celsius) {
    return celsius ? core::strings::toString(*celsius) : "None";
}

}  // namespace orvel::interfaces::orveli::jobs::field_report
