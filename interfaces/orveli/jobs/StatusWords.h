// The words behind a status, by the name that jobs use.
#pragma once

#include "core/StatusWords.h"

namespace orvel::interfaces::orveli::jobs {

using core::withWords;

}  // namespace orvel::interfaces::orveli::jobs
