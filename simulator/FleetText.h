// Fleets as JSON text: what users write to describe one, and what is kept between commands.
#pragma once

#include "simulator/Fleet.h"

#include <stdexcept>
#include <string>
#include <string_view>

namespace orvel::simulator {

/// Text that is no fleet. The message has the place and what was expected, in one line, such as
/// `drives[2].smartHealthLog.AvailableSpare: a number from 0 to 255 was expected, not "lots"`.
class FleetTextError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// What a drive has that its text doesn't mention.
enum class Unmentioned {
    TYPICAL,  ///< what a healthy drive of its kind has: for descriptions that people write
    BLANK     ///< nothing: for text that tells all
};

/// Throws FleetTextError, whatever the text is.
Fleet readFleet(std::string_view json, Unmentioned unmentioned);

/// Tells all: `readFleet(writeFleet(fleet), Unmentioned::BLANK) == fleet`.
std::string writeFleet(const Fleet& fleet);

}  // namespace orvel::simulator
