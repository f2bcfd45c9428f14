#include "interfaces/orveli/jobs/NvmeLogJob.h"

#include "core/CoreStatuses.h"
#include "core/Strings.h"
#include "core/xml/Vocabulary.h"
#include "features/DeviceAttributes.h"
#include "features/FeatureStatuses.h"
#include "features/JobConstants.h"
#include "features/JobProperties.h"
#include "interfaces/orveli/jobs/FieldReport.h"
#include "interfaces/orveli/jobs/NvmeLogReader.h"
#include "interfaces/orveli/jobs/SmartHealthReport.h"
#include "protocols/norvo/Structures.h"
#include "protocols/norvo/Vendor.h"
#include "protocols/nvme/StatusCodes.h"
#include "protocols/nvme/Structures.h"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <string>
#include <utility>

namespace orvel::interfaces::orveli::jobs {

using core::Payload;
using core::xml::XmlObject;
namespace ids = orvel::features::nvme_get_log::log_ids;
namespace names = orvel::features::nvme_get_log::log_names;
namespace norvo = protocols::norvo;
namespace nvme = protocols::nvme;

namespace {

Payload readPage(const NvmeLogReader& reader, std::uint8_t logPage, std::uint32_t bytes) {
    return reader.read({.logPage = logPage, .bytes = bytes});
}

void putErrorEntry(XmlObject& section, const Payload& entry) {
    namespace fields = nvme::error_information_entry;
    constexpr std::uint64_t NO_PARAMETER = 0xFFFF;  // the error is not about one
    constexpr nvme::BitField LOCATION[] = {
        nvme::parameter_error_location::BYTE,
        nvme::parameter_error_location::BIT,
    };
    constexpr nvme::BitField FLAGS[] = {
        nvme::error_status_field::SCT, nvme::error_status_field::SC,  nvme::error_status_field::CRD,
        nvme::error_status_field::M,   nvme::error_status_field::DNR,
    };
    const nvme::StatusCode status{static_cast<std::uint8_t>(readBits(
                                      entry, fields::StatusField, nvme::error_status_field::SCT)),
                                  static_cast<std::uint8_t>(readBits(
                                      entry, fields::StatusField, nvme::error_status_field::SC))};
    for (const auto& field : {fields::ErrorCount, fields::SubmissionQueueID, fields::CommandID})
        field_report::putField(section, entry, field);
    section.addValue(fields::StatusField.name, field_report::hexText(entry, fields::StatusField));
    field_report::putBits(section, entry, fields::StatusField, FLAGS);
    section.addValue("Status", nvme::statusText(status));
    field_report::putField(section, entry, fields::ParameterErrorLocation);
    if (protocols::readNumber(entry, fields::ParameterErrorLocation) != NO_PARAMETER)
        field_report::putBits(section, entry, fields::ParameterErrorLocation, LOCATION);
    for (const auto& field :
         {fields::LBA, fields::Namespace, fields::VendorSpecificInformationAvailable,
          fields::TRTYPE, fields::CommandSpecificInformation,
          fields::TransportTypeSpecificInformation})
        field_report::putField(section, entry, field);
}

void putErrorInfo(XmlObject& section, const NvmeLogReader& reader) {
    namespace fields = nvme::error_information_entry;
    auto count = static_cast<std::uint32_t>(
        protocols::readNumber(reader.getController(), nvme::identify_controller::ELPE) + 1);
    // The newest come first: a drive that can't be asked for all tells these.
    while (count > 1 && !reader.canRead(count * fields::SIZE))
        --count;
    const auto entries = nvme::errorInformationEntries(count);
    const Payload page =
        readPage(reader, nvme::log_pages::ERROR_INFORMATION, entries.size * entries.count);
    std::uint32_t valid = 0;
    for (std::uint32_t i = 0; i < count; ++i) {
        const Payload entry = protocols::readEntry(page, entries, i);
        if (protocols::readNumber(entry, fields::ErrorCount) == 0) continue;
        putErrorEntry(addSection(section, "Entry", core::strings::toString(i)), entry);
        ++valid;
    }
    section.addValue("NumberOfEntries", core::strings::toString(valid));
}

void putSmartHealthInfo(XmlObject& section, const NvmeLogReader& reader) {
    putSmartHealth(section, readPage(reader, nvme::log_pages::SMART_HEALTH_INFORMATION,
                                     nvme::smart_health_log::SIZE));
}

void putFirmwareSlots(XmlObject& section, const NvmeLogReader& reader) {
    namespace log = nvme::firmware_slot_log;
    constexpr nvme::BitField SLOTS[] = {nvme::afi::ACTIVE_SLOT, nvme::afi::NEXT_SLOT};
    const Payload page = readPage(reader, nvme::log_pages::FIRMWARE_SLOT_INFORMATION, log::SIZE);
    field_report::putDescribed(section, page, log::AFI);
    field_report::putBits(section, page, log::AFI, SLOTS);
    for (const auto& revision :
         {log::FRS1, log::FRS2, log::FRS3, log::FRS4, log::FRS5, log::FRS6, log::FRS7}) {
        const bool isFilled = !protocols::readText(page, revision).empty();
        if (isFilled) field_report::putDescribed(section, page, revision);
    }
}

void putTemperatureStatistics(XmlObject& section, const NvmeLogReader& reader) {
    namespace log = norvo::temperature_statistics;
    const Payload page = readPage(reader, norvo::log_pages::TEMPERATURE_STATISTICS, log::SIZE);
    for (const auto& field : log::ALL) {
        const auto number = static_cast<std::int64_t>(protocols::readNumber(page, field));
        section.addValue(field.name, core::strings::toString(number));
    }
}

void putQueueMetrics(XmlObject& section, const NvmeLogReader& reader) {
    namespace log = norvo::queue_metrics;
    const Payload page = readPage(reader, norvo::log_pages::QUEUE_METRICS, log::SIZE);
    const std::uint64_t queues = protocols::readNumber(page, log::NumberOfQueues);
    if (queues > log::QUEUES.count) throw features::statuses::dataRetrievalFailed();
    field_report::putField(section, page, log::NumberOfQueues);
    for (std::uint32_t i = 0; i < queues; ++i) {
        const Payload queue = protocols::readEntry(page, log::QUEUES, i);
        const std::string id = protocols::valueAsText(queue, norvo::queue_metrics_entry::QueueId);
        field_report::putFields(addSection(section, "Queue", id), queue,
                                norvo::queue_metrics_entry::ALL);
    }
}

/// Whose page it is: every drive has the standard's.
enum class Owner { STANDARD, VENDOR };

struct LogRow {
    std::uint32_t id;
    const char* name;
    Owner owner;
    void (*put)(XmlObject& section, const NvmeLogReader& reader);
};

// clang-format off
constexpr LogRow LOGS[] = {
//   id                       name                           owner            put
    {ids::ERROR_INFO,         names::ErrorInfo,              Owner::STANDARD, &putErrorInfo},
    {ids::SMART_HEALTH,       names::SmartHealthInfo,        Owner::STANDARD, &putSmartHealthInfo},
    {ids::FIRMWARE_SLOT_INFO, names::FirmwareSlotInfo,       Owner::STANDARD, &putFirmwareSlots},
    {ids::TEMP_STATISTICS,    names::TemperatureStatistics,  Owner::VENDOR,   &putTemperatureStatistics},
    {ids::QUEUE_METRICS,      names::QueueMetrics,           Owner::VENDOR,   &putQueueMetrics},
};

// clang-format on

void addLog(XmlObject& drive, const NvmeLogReader& reader, const LogRow& row) {
    auto section = std::make_unique<XmlObject>();
    section->setAttribute(core::xml::tags::Name, row.name);
    row.put(*section, reader);
    drive.addObject(std::move(section));
}

void addAllLogs(XmlObject& drive, const NvmeLogReader& reader, bool isNorvo) {
    for (const LogRow& row : LOGS) {
        if (row.owner == Owner::VENDOR && !isNorvo) continue;
        try {
            addLog(drive, reader, row);
        } catch (const core::Status& status) {
            // Drives refuse what they don't have in various words.
            const bool isLackedByDrive =
                status == features::statuses::featureNotSupportedByDrive() ||
                status == core::statuses::nvmeCommandProblem();
            if (row.owner == Owner::STANDARD || !isLackedByDrive) throw;
        }
    }
}

}  // namespace

NvmeLogJob::NvmeLogJob() : DriveJob(jobs::NVMeGetLog, Kind::NVME, "NVMeLog") {}

std::unique_ptr<Job> NvmeLogJob::clone() const {
    return std::make_unique<NvmeLogJob>();
}

core::Status NvmeLogJob::runMethod(std::unique_ptr<core::xml::XmlElement>& response) {
    return reportEach(response);
}

core::Status NvmeLogJob::report(core::Device& device, XmlObject& drive) {
    const auto wanted = findNumber(features::nvme_get_log::LogId());
    if (!wanted) {
        addAllLogs(drive, NvmeLogReader(device),
                   device.isSet(features::device_attributes::Norvo()));
        return {};
    }
    const auto* const row = std::find_if(std::begin(LOGS), std::end(LOGS),
                                         [&](const LogRow& each) { return each.id == *wanted; });
    if (row == std::end(LOGS)) return features::statuses::invalidLogId();
    if (row->owner == Owner::VENDOR) requireNorvo(device);
    addLog(drive, NvmeLogReader(device), *row);
    return {};
}

}  // namespace orvel::interfaces::orveli::jobs
