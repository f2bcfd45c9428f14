// Where the library finds what is its own.
#pragma once

#include <string>

namespace orvel::interfaces::orveli::shared_object::places {

/// The folder that the file with this code lies in, with its "/" at the end; "./" if it can't be
/// told.
std::string ownFolder();

/// Of the simulated drives: what the environment variable `NORVO_SIMULATED_DRIVES` names, or
/// `simulated_drives` in the library's own folder.
std::string stateFolder();

/// `FirmwareModules` in the library's own folder.
std::string firmwareModules();

}  // namespace orvel::interfaces::orveli::shared_object::places
