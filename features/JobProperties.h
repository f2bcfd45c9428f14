// Descriptors of the job properties: one function per row, each call a new, blank attribute.
#pragma once

#include "core/Attribute.h"
#include "core/AttributeTypes.h"

namespace orvel::features {

namespace types = core::types;

#define PROPERTY(group, name, displayName, type)                                                   \
    namespace group {                                                                              \
    core::Attribute name();                                                                        \
    }
#define PROPERTY_NAMED(name, group, function, displayName, type)                                   \
    PROPERTY(group, function, displayName, type)
#define PROPERTY_WITH_VALUE(value, group, name, displayName, type)                                 \
    PROPERTY(group, name, displayName, type)
#include "features/JobProperties.def"

// Device attributes that a job takes as properties: the same descriptor under the job's name.

namespace namespace_management {
core::Attribute NamespaceId();
core::Attribute NVMeControllerID();
}  // namespace namespace_management

namespace phy_config {
core::Attribute PhyConfig();
}  // namespace phy_config

namespace spread_spectrum_clocking {
core::Attribute SSCEnabled();
}  // namespace spread_spectrum_clocking

namespace dipm {
core::Attribute DIPMEnabled();
}  // namespace dipm

namespace write_cache {
core::Attribute WriteCacheEnabled();
}  // namespace write_cache

}  // namespace orvel::features
