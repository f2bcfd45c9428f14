// The job interface's status table, category 11: one function per row, each call a new value.
#pragma once

#include "core/Status.h"

namespace orvel::interfaces::orveli::statuses {

#define STATUS(code, name, text) core::Status name();
#include "features/JobInterfaceStatuses.def"

}  // namespace orvel::interfaces::orveli::statuses
