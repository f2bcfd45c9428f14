// The fleet of somebody who hasn't described one.
#pragma once

#include <string_view>

namespace orvel::simulator {

/// A description for `readFleet` with `Unmentioned::TYPICAL`: eight drives, in health and out of
/// it.
std::string_view defaultFleet();

}  // namespace orvel::simulator
