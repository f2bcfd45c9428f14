// Descriptors of the device attributes: one function per row, each call a new, blank attribute.
#pragma once

#include "core/Attribute.h"
#include "core/AttributeTypes.h"

namespace orvel::features {

namespace types = core::types;

namespace device_attributes {

#define ATTRIBUTE(name, displayName, type) core::Attribute name();
#include "features/DeviceAttributes.def"

}  // namespace device_attributes

}  // namespace orvel::features
