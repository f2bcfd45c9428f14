// What becomes of failures of the system around the simulated drives.
#pragma once

#include "core/Status.h"

#include <functional>

namespace orvel::simulator {

/// As the operating system reports it; `error` is a value of errno.
core::Status systemError(int error);

/// Status of the work; an exception of any kind becomes one.
core::Status statusOf(const std::function<core::Status()>& work);

}  // namespace orvel::simulator
