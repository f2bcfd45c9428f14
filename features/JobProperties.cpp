#include "features/JobProperties.h"

#include "features/DeviceAttributes.h"

namespace orvel::features {

// `types` is written in full: some groups have a namespace of this name for their own words.
#define DESCRIPTOR(group, function, name, displayName, type)                                       \
    core::Attribute group::function() {                                                            \
        return core::Attribute(name, displayName, ::orvel::features::types::type());               \
    }
#define PROPERTY(group, name, displayName, type) DESCRIPTOR(group, name, #name, displayName, type)
#define PROPERTY_NAMED(name, group, function, displayName, type)                                   \
    DESCRIPTOR(group, function, name, displayName, type)
#define PROPERTY_WITH_VALUE(value, group, name, displayName, type)                                 \
    core::Attribute group::name() {                                                                \
        core::Attribute attribute(#name, displayName, ::orvel::features::types::type());           \
        attribute.setValue(value);                                                                 \
        return attribute;                                                                          \
    }
#include "features/JobProperties.def"
#undef DESCRIPTOR

core::Attribute namespace_management::NamespaceId() {
    return device_attributes::NamespaceId();
}

core::Attribute namespace_management::NVMeControllerID() {
    return device_attributes::NVMeControllerID();
}

core::Attribute phy_config::PhyConfig() {
    return device_attributes::PhyConfig();
}

core::Attribute spread_spectrum_clocking::SSCEnabled() {
    return device_attributes::SSCEnabled();
}

core::Attribute dipm::DIPMEnabled() {
    return device_attributes::DIPMEnabled();
}

core::Attribute write_cache::WriteCacheEnabled() {
    return device_attributes::WriteCacheEnabled();
}

}  // namespace orvel::features
