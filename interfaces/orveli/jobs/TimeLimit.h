// More time for a command that a drive is long about.
#pragma once

#include "core/Device.h"

#include <cstdint>
#include <string>
#include <utility>

namespace orvel::interfaces::orveli::jobs {

/// Raises the time limit of a command set's path for as long as it lives; never lowers it.
class TimeLimit {
public:
    TimeLimit(core::Device& device, std::string commandSet, std::int32_t seconds)
        : device(device),
          commandSet(std::move(commandSet)),
          before(device.getTimeout(this->commandSet)) {
        if (before >= 0 && seconds > before) device.setTimeout(seconds, this->commandSet);
    }

    TimeLimit(const TimeLimit&) = delete;
    TimeLimit& operator=(const TimeLimit&) = delete;

    ~TimeLimit() {
        if (before >= 0) device.setTimeout(before, commandSet);
    }

private:
    core::Device& device;
    std::string commandSet;
    std::int32_t before;
};

}  // namespace orvel::interfaces::orveli::jobs
