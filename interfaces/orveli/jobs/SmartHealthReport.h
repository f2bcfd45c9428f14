// The SMART / Health Information log page as properties of an answer.
#pragma once

#include "core/Payload.h"
#include "core/xml/XmlObject.h"

namespace orvel::interfaces::orveli::jobs {

/// Adds every field: under the catalogue's name where there is one, temperatures in degrees
/// Celsius. Sensors that the drive doesn't have are left out. Throws core::Status by value, code
/// 14, for less than a whole page.
void putSmartHealth(core::xml::XmlObject& section, const core::Payload& page);

}  // namespace orvel::interfaces::orveli::jobs
