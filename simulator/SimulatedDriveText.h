// What drives of all kinds have in a fleet's text.
#pragma once

#include "simulator/Fleet.h"
#include "simulator/JsonWriter.h"
#include "simulator/TextPlace.h"
#include "simulator/TypicalDrives.h"

namespace orvel::simulator {

/// Throws FleetTextError; the drive is then of no use.
void readSimulatedDrive(const TextPlace& place, SimulatedDrive& drive);

void writeSimulatedDrive(JsonWriter& out, const SimulatedDrive& drive);

/// The convenience keys of descriptions. What is left out is that of `typical`, but for the serial
/// number, which is made from the device path.
DriveBasics readBasics(const TextPlace& place, const DriveBasics& typical);

/// The keys that `readSimulatedDrive` and `readBasics` read.
template <class Text>
void knowCommonKeys(Text& text) {
    for (const char* key : {"kind", "devicePath", "partitions", "raid", "faults", "lost"})
        text.alsoKnown(key);
    for (const char* key : {"model", "serialNumber", "firmware", "bootloader", "capacity"})
        text.alsoTypical(key);
}

}  // namespace orvel::simulator
