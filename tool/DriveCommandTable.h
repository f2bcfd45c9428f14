// The drive feature's language: its 45 commands with their targets, options and properties.
// Knows nothing of requests or jobs.
#pragma once

#include "interfaces/cli/cliframework/CommandSpec.h"

#include <vector>

namespace tavik::norvossd {

/// Appends the declarations in the order in which help lists them.
void appendDriveCommands(std::vector<cli::framework::CommandSpec>& commands);

}  // namespace tavik::norvossd
