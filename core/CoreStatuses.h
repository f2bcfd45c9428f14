// The core's status table, category 0: one function per row, each call a new value.
#pragma once

#include "core/Status.h"

namespace orvel::core::statuses {

#define STATUS(code, name, text) Status name();
#include "core/CoreStatuses.def"

}  // namespace orvel::core::statuses
