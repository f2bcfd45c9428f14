// The structures of Identify of an NVMe drive as properties of an answer.
#pragma once

#include "core/Payload.h"
#include "core/xml/XmlObject.h"

namespace orvel::interfaces::orveli::jobs {

/// A name that the tool hides, for the vendor's own bytes.
inline constexpr const char* VENDOR_BYTES = "VendorUniqueIdentifyPayload";

// Each adds every field by the standard's abbreviation and words, numbers of bits in hexadecimal
// and followed by their bits. Both throw core::Status by value, code 14, for less than a whole
// structure.

/// With a section for each power state, and the vendor's fields at the end.
void putController(core::xml::XmlObject& section, const core::Payload& structure);

/// With a section for each LBA format.
void putNamespace(core::xml::XmlObject& section, const core::Payload& structure);

}  // namespace orvel::interfaces::orveli::jobs
