// SATA drives as text.
#pragma once

#include "simulator/AtaDrive.h"
#include "simulator/JsonWriter.h"
#include "simulator/TextPlace.h"

namespace orvel::simulator {

/// From the object of a drive of a fleet, which may have the members of `SimulatedDrive`, too.
/// Throws FleetTextError, also for a drive that contradicts itself.
AtaDrive readAtaDrive(const TextPlace& place);

/// Into an object that has been begun.
void writeAtaDrive(JsonWriter& out, const AtaDrive& drive);

}  // namespace orvel::simulator
