// How drives count temperatures.
#pragma once

#include <cstdint>

namespace orvel::protocols::nvme {

/// In kelvins, in which drives tell temperatures and take thresholds; whole, as the standard has
/// it.
inline constexpr std::int32_t ZERO_CELSIUS = 273;

}  // namespace orvel::protocols::nvme
