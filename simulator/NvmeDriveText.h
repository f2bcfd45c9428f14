// NVMe drives as text.
#pragma once

#include "simulator/JsonWriter.h"
#include "simulator/NvmeDrive.h"
#include "simulator/TextPlace.h"

namespace orvel::simulator {

/// From the object of a drive of a fleet, which may have the members of `SimulatedDrive`, too.
/// Throws FleetTextError, also for a drive that contradicts itself.
NvmeDrive readNvmeDrive(const TextPlace& place);

/// Into an object that has been begun.
void writeNvmeDrive(JsonWriter& out, const NvmeDrive& drive);

}  // namespace orvel::simulator
