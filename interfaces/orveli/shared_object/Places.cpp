#include "interfaces/orveli/shared_object/Places.h"

#include <dlfcn.h>

#include <cstdlib>

namespace orvel::interfaces::orveli::shared_object::places {

std::string ownFolder() {
    // The program may lie elsewhere, so its own path is of no use: the loader tells which file
    // this code came from.
    Dl_info info = {};
    if (dladdr(reinterpret_cast<const void*>(&ownFolder), &info) == 0 || !info.dli_fname)
        return "./";
    const std::string file = info.dli_fname;
    return file.substr(0, file.rfind('/') + 1) + (file.find('/') == std::string::npos ? "./" : "");
}

std::string stateFolder() {
    const char* named = std::getenv("NORVO_SIMULATED_DRIVES");
    if (named != nullptr && *named != '\0') return named;
    return ownFolder() + "simulated_drives";
}

std::string firmwareModules() {
    return ownFolder() + "FirmwareModules";
}

}  // namespace orvel::interfaces::orveli::shared_object::places
