// Log pages of one NVMe drive, each read when it is first asked for.
#pragma once

#include "core/Device.h"
#include "core/Payload.h"

#include <cstdint>
#include <map>
#include <optional>

namespace orvel::interfaces::orveli::jobs {

/// For jobs that show values out of several log pages, of which a user may want only some. Lives as
/// long as one drive's report, and borrows the drive.
class NvmeLogs {
public:
    explicit NvmeLogs(core::Device& device) : device(device) {}

    /// SMART / Health Information of the whole controller. Throws core::Status by value if it can't
    /// be read.
    const core::Payload& smartHealth();

    /// One of norvo::log_pages with 512 bytes, or null if the drive is of another maker or refuses
    /// the page. Throws core::Status by value if the drive can't be reached.
    const core::Payload* findVendorPage(std::uint8_t logPage);

private:
    core::Device& device;
    std::map<std::uint8_t, std::optional<core::Payload>> pages;  ///< by identifier
};

}  // namespace orvel::interfaces::orveli::jobs
