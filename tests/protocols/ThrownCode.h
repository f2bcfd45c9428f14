// What a call throws.
#pragma once

#include "core/Status.h"

#include <cstdint>

namespace orvel::protocols {

/// The code of the core status that `action` throws: -1 for none, -2 for one of another category.
template <class Action>
std::int32_t thrownCode(const Action& action) {
    try {
        action();
    } catch (const core::Status& status) {
        return status.isCategory(core::status_categories::CORE) ? status.getCode() : -2;
    }
    return -1;
}

}  // namespace orvel::protocols
