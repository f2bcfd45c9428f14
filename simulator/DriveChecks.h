// What must agree within one drive's record, so that its controller can rely on it.
#pragma once

#include "simulator/AtaDrive.h"
#include "simulator/NvmeDrive.h"
#include "simulator/TextPlace.h"

namespace orvel::simulator {

/// Each throws FleetTextError for the first contradiction. `place` is the drive's object.
void checkDrive(const TextPlace& place, const NvmeDrive& drive);
void checkDrive(const TextPlace& place, const AtaDrive& drive);

}  // namespace orvel::simulator
