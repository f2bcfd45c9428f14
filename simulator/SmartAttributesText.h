// Single SMART attributes of a description, by their numbers.
#pragma once

#include "simulator/AtaDrive.h"
#include "simulator/TextPlace.h"

namespace orvel::simulator {

/// `{"5": {"normalized": 3, "worst": 3, "raw": 2048, "threshold": 10, "flags": 51}}`. What isn't
/// mentioned stays; a new attribute takes the next free place, null takes one away.
void readSmartAttributes(const TextPlace& place, const AtaDrive& drive);

}  // namespace orvel::simulator
