// The values of features, bit by bit.
#pragma once

#include "protocols/nvme/BitField.h"

namespace orvel::protocols::nvme {

// Namespaces `arbitration`, `power_management` and so on, for `readBits` and `withBits`.
#define BITS(group, name, lowBit, bits, meaning)                                                   \
    namespace group {                                                                              \
    inline constexpr BitField name{#name, meaning, lowBit, bits};                                  \
    }
#include "protocols/nvme/FeatureBits.def"

}  // namespace orvel::protocols::nvme
