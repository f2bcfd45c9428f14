// The features' status table, category 10: one function per row, each call a new value.
#pragma once

#include "core/Status.h"

namespace orvel::features::statuses {

#define STATUS(code, name, text) core::Status name();
#include "features/FeatureStatuses.def"

}  // namespace orvel::features::statuses
