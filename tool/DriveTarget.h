// The target of a drive command: which drive the line means. A check of form only.
#pragma once

#include "interfaces/cli/cliframework/CliFrameworkTypes.h"
#include "interfaces/cli/cliframework/ErrorResult.h"

#include <memory>
#include <string>

namespace tavik::norvossd {

/// Fills `target` with the upper-cased value of -norvossd; empty if the line names no drive.
/// `part` tells by its `required` and `valueRequired` what the caller insists on. Null if the
/// value is an index, a physical drive path or a serial number in form.
std::unique_ptr<cli::framework::ErrorResult>
getNorvoSSDTarget(const cli::framework::ParsedCommand& parsed, std::string& target,
                  const cli::framework::CommandPart& part);

/// What the target's form makes of it.
enum class TargetKind { index, path, serialNumber };

TargetKind kindOfTarget(const std::string& target);

}  // namespace tavik::norvossd
