// IDENTIFY DEVICE data of a SATA drive as properties of an answer.
#pragma once

#include "core/Payload.h"
#include "core/xml/XmlObject.h"

namespace orvel::interfaces::orveli::jobs {

/// Adds every field, words of bits in hexadecimal and followed by their bits, and the vendor's
/// fields at the end. Throws core::Status by value, code 14, for less than a whole structure.
void putIdentifyDevice(core::xml::XmlObject& section, const core::Payload& identify);

}  // namespace orvel::interfaces::orveli::jobs
