#include "core/Memory.h"

#include "core/GlobalLogging.h"

#include <cerrno>
#include <cstring>
#include <string>

namespace orvel::core {

int memCopy(void* destination, std::size_t destinationSize, const void* source,
            std::size_t sourceSize) {
    if (sourceSize > destinationSize) {
        global_logging::write(
            boost::log::trivial::error, ORVEL_HERE,
            "Invalid call to memCopy: source size (" + std::to_string(sourceSize) +
                ") is greater than destination size (" + std::to_string(destinationSize) + ")");
    }
    if (source == nullptr || destination == nullptr) return EINVAL;
    if (sourceSize > destinationSize) return ERANGE;
    // The two may overlap: a payload may be copied over itself.
    std::memmove(destination, source, sourceSize);
    return 0;
}

}  // namespace orvel::core
