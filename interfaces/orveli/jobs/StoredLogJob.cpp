#include "interfaces/orveli/jobs/StoredLogJob.h"

#include "core/CoreStatuses.h"
#include "features/FeatureStatuses.h"
#include "interfaces/orveli/access/DriveKind.h"
#include "interfaces/orveli/jobs/AtaLogReader.h"
#include "interfaces/orveli/jobs/NvmeLogReader.h"
#include "protocols/norvo/Structures.h"

#include <utility>

namespace orvel::interfaces::orveli::jobs {

using core::Device;
using core::Payload;
using core::Status;
namespace stored_log = protocols::norvo::stored_log;

namespace {

constexpr std::uint32_t UNIT = 512;
constexpr std::uint32_t LARGEST_NVME_LOG = 65535 * UNIT;  // what a SATA drive's log can have

}  // namespace

StoredLogJob::StoredLogJob(std::string name, std::string title, const StoredLogKind& log)
    : DriveJob(std::move(name), Kind::ANY, std::move(title)),
      log(log) {}

Status StoredLogJob::runMethod(std::unique_ptr<core::xml::XmlElement>& response) {
    return reportEach(response);
}

Status StoredLogJob::report(Device& device, core::xml::XmlObject& drive) {
    requireNorvo(device);
    addPayload(drive, read(device));
    return {};
}

void StoredLogJob::checkHeader(const Payload&) const {}

Payload StoredLogJob::read(Device& device) const {
    try {
        return isNvme(device) ? readNvme(device) : readAta(device);
    } catch (const Status& status) {
        if (status == core::statuses::ioCommandReturnedTooLittleData()) throw log.invalidData();
        throw;
    }
}

Payload StoredLogJob::readNvme(Device& device) const {
    const NvmeLogReader reader(device);
    protocols::nvme::LogPageRequest request{.logPage = log.nvmeLogPage, .bytes = stored_log::SIZE};
    request.bytes = checkedLength(reader.read(request), LARGEST_NVME_LOG);
    return reader.read(request);
}

Payload StoredLogJob::readAta(Device& device) const {
    const std::uint32_t pages = ata_logs::pagesAt(device, log.ataLogAddress);
    if (pages == 0) throw features::statuses::featureNotSupportedByDrive();
    const Payload header = ata_logs::read(device, log.ataLogAddress, 0, 1);
    const std::uint32_t length = checkedLength(header, pages * ata_logs::PAGE_SIZE);
    return ata_logs::read(device, log.ataLogAddress, 0, length / ata_logs::PAGE_SIZE);
}

std::uint32_t StoredLogJob::checkedLength(const Payload& header, std::uint32_t largest) const {
    const auto length =
        static_cast<std::uint32_t>(protocols::readNumber(header, stored_log::Length));
    const bool isValid = protocols::readText(header, stored_log::Signature) == log.signature &&
                         length >= stored_log::SIZE && length <= largest && length % UNIT == 0;
    if (!isValid) throw log.invalidData();
    checkHeader(header);
    return length;
}

}  // namespace orvel::interfaces::orveli::jobs
