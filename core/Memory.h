// The one checked copy routine that all payload copying goes through.
#pragma once

#include <cstddef>

namespace orvel::core {

/// Copies `sourceSize` bytes. Returns 0, EINVAL for a null pointer, or ERANGE if the source does
/// not fit, in which case nothing is copied. A source that does not fit is logged first.
int memCopy(void* destination, std::size_t destinationSize, const void* source,
            std::size_t sourceSize);

}  // namespace orvel::core
