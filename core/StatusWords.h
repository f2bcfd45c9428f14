// A status with more to say than its row.
#pragma once

#include "core/Status.h"

#include <string>

namespace orvel::core {

/// The status with `words` behind its own, after a blank. Category and code stay.
inline Status withWords(Status status, const std::string& words) {
    status.setMessage(status.getMessage() + " " + words);
    return status;
}

}  // namespace orvel::core
