// One partition of a device.
#pragma once

#include "core/AttributeHolder.h"

namespace orvel::core {

/// Known by its attributes; the one named "Path" is where the system has it.
class Partition : public AttributeHolder {};

}  // namespace orvel::core
