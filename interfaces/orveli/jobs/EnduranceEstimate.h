// How long a drive would live under the workload that has been timed.
#pragma once

#include "core/Device.h"

#include <cstdint>
#include <string>

namespace orvel::interfaces::orveli::jobs {

/// A timed workload: what it has worn off, and how long it has run.
struct TimedWorkload {
    bool isReset = false;         ///< then the wear means nothing yet
    std::uint64_t mediaWear = 0;  ///< in 1/1024 of a percent
    std::uint64_t minutes = 0;
};

/// "12.34 years", of 365 days. Instead, the text of status 10/75 for a workload of less than an
/// hour or values that were just reset, and that of 10/74 for one without wear.
std::string expectedLife(const TimedWorkload& workload);

/// Out of the health statistics or the SMART attributes of one of the maker's drives. Throws
/// core::Status by value: 10/3 if the drive doesn't time its workload, and what the commands throw.
TimedWorkload readTimedWorkload(core::Device& device);

}  // namespace orvel::interfaces::orveli::jobs
