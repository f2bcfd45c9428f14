#include "features/DeviceAttributes.h"

namespace orvel::features::device_attributes {

#define ATTRIBUTE(name, displayName, type)                                                         \
    core::Attribute name() {                                                                       \
        return core::Attribute(#name, displayName, types::type());                                 \
    }
#include "features/DeviceAttributes.def"

}  // namespace orvel::features::device_attributes
