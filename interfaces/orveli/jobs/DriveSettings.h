// What the commands that set a property of a drive have set: the values that are in force.
#pragma once

#include "core/Attribute.h"
#include "core/Device.h"

#include <optional>
#include <string>
#include <vector>

namespace orvel::interfaces::orveli::jobs::drive_settings {

/// Names of the settings that drives of this kind and maker may have, in the order of a table; not
/// those that this one says it lacks.
std::vector<std::string> namesFor(core::Device& device);

/// The blank descriptor of the setting with this name, whatever its case; nothing if drives of this
/// kind and maker have none.
std::optional<core::Attribute> find(const core::Device& device, const std::string& name);

/// Throws 10/3 if the drive says that it lacks the setting of a descriptor that `find` returned.
void requireSupport(core::Device& device, const core::Attribute& setting);

/// Reads the setting of a descriptor that `find` returned. Throws core::Status by value if the
/// drive refuses, can't be reached, or tells a value that has no meaning.
core::Attribute read(core::Device& device, const core::Attribute& setting);

}  // namespace orvel::interfaces::orveli::jobs::drive_settings
