// The values of features, bit by bit.
#pragma once

#include "protocols/nvme/BitField.h"

namespace orvel::protocols::nvme {

// Namespaces `arbitration`, `power_management` and so on, for `readBits` and `withBits`.
#define BIT_TABLE "protocols/nvme/FeatureBits.def"
#include "protocols/nvme/BitTable.def"

}  // namespace orvel::protocols::nvme
