#include "interfaces/orveli/jobs/NvmeLogs.h"

#include "core/CoreStatuses.h"
#include "features/DeviceAttributes.h"
#include "interfaces/orveli/access/NvmeAccess.h"
#include "protocols/nvme/Structures.h"

namespace orvel::interfaces::orveli::jobs {

using core::Payload;
namespace attributes = orvel::features::device_attributes;
namespace nvme = protocols::nvme;

namespace {

constexpr std::uint32_t PAGE_SIZE = 512;

nvme::LogPageRequest requestOf(std::uint8_t logPage) {
    nvme::LogPageRequest request;
    request.logPage = logPage;
    request.bytes = PAGE_SIZE;
    return request;
}

/// Nothing for a page that the drive doesn't have.
std::optional<Payload> readVendorPage(core::Device& device, std::uint8_t logPage) {
    if (!device.isSet(attributes::Norvo())) return std::nullopt;
    try {
        return nvme_access::logPage(device, requestOf(logPage));
    } catch (const core::Status& status) {
        if (status == core::statuses::nvmeCommandProblem()) return std::nullopt;
        throw;
    }
}

}  // namespace

const Payload& NvmeLogs::smartHealth() {
    auto& page = pages[nvme::log_pages::SMART_HEALTH_INFORMATION];
    if (!page) {
        page = nvme_access::logPage(device, requestOf(nvme::log_pages::SMART_HEALTH_INFORMATION));
    }
    return *page;
}

const Payload* NvmeLogs::findVendorPage(std::uint8_t logPage) {
    auto found = pages.find(logPage);
    if (found == pages.end()) {
        found = pages.emplace(logPage, readVendorPage(device, logPage)).first;
    }
    return found->second ? &*found->second : nullptr;
}

}  // namespace orvel::interfaces::orveli::jobs
