// A status with more to say than its row.
#pragma once

#include "core/Status.h"

#include <algorithm>
#include <string>

namespace orvel::core {

/// The status with `words` behind its own, after a blank. Category and code stay. Quotation marks
/// in the words become single ones: a tool may quote the message without escaping it.
inline Status withWords(Status status, std::string words) {
    std::replace(words.begin(), words.end(), '"', '\'');
    status.setMessage(status.getMessage() + " " + words);
    return status;
}

}  // namespace orvel::core
