// Faults as text.
#pragma once

#include "simulator/Fleet.h"
#include "simulator/JsonWriter.h"
#include "simulator/TextPlace.h"

namespace orvel::simulator {

enum class DriveKind { NVME, SATA };

/// The form of a fault of such a drive's list, for Fleet's text (see RecordText.h).
struct FaultForm {
    DriveKind kind;

    /// In a description, a fault has only the keys that mean something to it, and a command that
    /// drives of the kind know.
    void read(const TextPlace& place, Fault& fault) const;

    void write(JsonWriter& out, const Fault& fault) const;
};

}  // namespace orvel::simulator
