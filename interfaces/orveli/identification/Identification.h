// What the identifiers share: storing attributes, and failing into attributes.
#pragma once

#include "core/Attribute.h"
#include "core/Device.h"
#include "core/Payload.h"
#include "core/Status.h"
#include "protocols/Field.h"

#include <cstdint>
#include <functional>
#include <string>

namespace orvel::interfaces::orveli::identification {

/// A function of features/DeviceAttributes.h.
using AttributeFunction = core::Attribute (*)();

/// Sets the attribute of this blank descriptor.
template <class Value>
void store(core::Device& device, core::Attribute descriptor, const Value& value) {
    descriptor.setValue(value);
    device.setAttribute(descriptor);
}

/// The same, but leaves an attribute alone for an empty text.
void storeText(core::Device& device, const core::Attribute& descriptor, const std::string& text);

/// A number in the width that the attribute's type has; nothing is set if it doesn't fit.
void storeNumber(core::Device& device, core::Attribute descriptor, std::uint64_t number);

/// Throws 10/33 if one of these texts has a byte that the standards allow in no text: what came
/// isn't the structure. NULs pass, because drives fill up with them.
void requireText(const core::Payload& structure, protocols::Fields texts);

/// Runs a step of an identifier. Whatever it throws becomes the attributes ErrorString and
/// DriverCommunicationError, so that a scan of many drives outlives one that talks nonsense; and
/// the result.
core::Status attempt(core::Device& device, const std::function<void()>& step);

}  // namespace orvel::interfaces::orveli::identification
