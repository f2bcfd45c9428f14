// The way from an exception to a status.
#pragma once

#include "core/Status.h"

namespace orvel::core {

/// Of the exception that is being handled: the status that was thrown, or 1/5 with the exception's
/// text, or with a fixed one for what is no std::exception. Only for a handler.
Status statusOfCurrentException();

/// What `action` returns, or the status of what it throws.
template <class Action>
Status guarded(const Action& action) {
    try {
        return action();
    } catch (...) {
        return statusOfCurrentException();
    }
}

}  // namespace orvel::core
