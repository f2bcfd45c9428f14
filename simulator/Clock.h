// The time as simulated drives get to know it.
#pragma once

#include <chrono>
#include <functional>

namespace orvel::simulator {

/// The time since a moment of the clock's choice; it never goes back.
using Clock = std::function<std::chrono::milliseconds()>;

}  // namespace orvel::simulator
