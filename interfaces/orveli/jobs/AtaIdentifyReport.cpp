#include "interfaces/orveli/jobs/AtaIdentifyReport.h"

#include "core/Strings.h"
#include "interfaces/orveli/jobs/FieldReport.h"
#include "interfaces/orveli/jobs/NvmeIdentifyReport.h"
#include "protocols/ata/IdentifyDevice.h"
#include "protocols/ata/Structures.h"
#include "protocols/norvo/Structures.h"

#include <algorithm>
#include <iterator>
#include <string>

namespace orvel::interfaces::orveli::jobs {

using core::Payload;
using core::xml::XmlObject;
using protocols::Field;
namespace ata = protocols::ata;
namespace device = protocols::ata::identify_device;

namespace {

bool isWithin(const device::Bits& bits, const Field& field) {
    const std::uint32_t offset = bits.word * ata::WORD;
    return offset >= field.offset && offset < field.offset + field.size;
}

bool hasBits(const Field& field) {
    return std::any_of(std::begin(device::ALL_BITS), std::end(device::ALL_BITS),
                       [&](const device::Bits& bits) { return isWithin(bits, field); });
}

void putBits(XmlObject& section, const Payload& identify, const Field& field) {
    for (const device::Bits& bits : device::ALL_BITS) {
        if (!isWithin(bits, field)) continue;
        section.addProperty(std::string(field.name) + "." + bits.name, bits.meaning,
                            core::strings::toString(device::readBits(identify, bits)));
    }
}

std::string textOf(const Payload& identify, const Field& field) {
    constexpr int NAME_DIGITS = 16;
    if (field.offset == device::WorldWideName.offset) {
        return core::strings::toHexString(device::readWorldWideName(identify), NAME_DIGITS);
    }
    return hasBits(field) ? field_report::hexText(identify, field)
                          : protocols::valueAsText(identify, field);
}

}  // namespace

void putIdentifyDevice(XmlObject& section, const Payload& identify) {
    for (const Field& field : device::ALL) {
        if (field.offset == device::VendorSpecific.offset) continue;
        section.addValue(field.name, textOf(identify, field));
        putBits(section, identify, field);
    }
    for (const Field& field : protocols::norvo::identify_device::ALL)
        field_report::putField(section, identify, field);
    section.addValue(VENDOR_BYTES, protocols::valueAsText(identify, device::VendorSpecific));
}

}  // namespace orvel::interfaces::orveli::jobs
