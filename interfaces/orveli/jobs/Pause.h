// How a job waits between two looks at a drive that is busy.
#pragma once

#include <chrono>
#include <functional>

namespace orvel::interfaces::orveli::jobs {

/// Blocks for so long. A job takes it as an argument, so that nobody has to wait for a test.
using Pause = std::function<void(std::chrono::milliseconds)>;

/// Puts the thread to sleep.
void sleepFor(std::chrono::milliseconds time);

}  // namespace orvel::interfaces::orveli::jobs
