#include "interfaces/orveli/jobs/HdaTemperatureJob.h"

#include "core/Strings.h"
#include "features/FeatureStatuses.h"
#include "features/JobConstants.h"
#include "interfaces/orveli/access/AtaAccess.h"
#include "interfaces/orveli/jobs/FieldReport.h"
#include "protocols/ata/Logs.h"
#include "protocols/ata/Structures.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace orvel::interfaces::orveli::jobs {

using core::Payload;
using core::xml::XmlObject;
using protocols::Field;
namespace ata = protocols::ata;
namespace history = protocols::ata::sct_temperature_history;
namespace status = protocols::ata::sct_status;

namespace {

constexpr std::uint64_t TABLE_VERSION = 2;

constexpr Field CURRENT_TEMPERATURES[] = {
    status::Temperature,        status::MinTemperature,     status::MaxTemperature,
    status::LifeMinTemperature, status::LifeMaxTemperature,
};

constexpr Field LIMITS[] = {
    history::MaxOpLimit,
    history::OverLimit,
    history::MinOpLimit,
    history::UnderLimit,
};

void putTemperatures(XmlObject& section, const Payload& structure, protocols::Fields fields) {
    for (const Field& field : fields) {
        section.addValue(field.name,
                         field_report::temperatureText(ata::readTemperature(structure, field)));
    }
}

/// The whole table, however long its circular buffer is.
Payload readTable(core::Device& device) {
    constexpr std::uint32_t BLOCK = history::SIZE;
    const Payload first = ata_access::sctTable(device, ata::sct::TEMPERATURE_HISTORY_TABLE, 1);
    if (protocols::readNumber(first, history::FormatVersion) != TABLE_VERSION)
        throw features::statuses::dataRetrievalFailed();
    const std::uint64_t samples = protocols::readNumber(first, history::CBSize);
    if (samples <= history::SAMPLES.count) return first;
    const std::uint64_t blocks = (history::SAMPLES.offset + samples + BLOCK - 1) / BLOCK;
    return ata_access::sctTable(device, ata::sct::TEMPERATURE_HISTORY_TABLE,
                                static_cast<std::uint8_t>(blocks));
}

std::vector<std::optional<int>> samplesOf(const Payload& table) {
    try {
        return ata::sct::temperatureHistory(table);
    } catch (const core::Status&) {
        throw features::statuses::dataRetrievalFailed();
    }
}

void putHistory(XmlObject& drive, const Payload& table) {
    XmlObject& section = addSection(drive, "TemperatureHistory");
    field_report::putField(section, table, history::SamplingPeriod);
    field_report::putField(section, table, history::Interval);
    putTemperatures(section, table, LIMITS);
    const auto samples = samplesOf(table);
    section.addValue("NumberOfSamples", core::strings::toString(std::uint64_t{samples.size()}));
    for (std::size_t i = 0; i < samples.size(); ++i) {
        if (!samples[i]) continue;
        section.addValue("Sample " + core::strings::toString(std::uint64_t{i}),
                         core::strings::toString(*samples[i]));
    }
}

}  // namespace

HdaTemperatureJob::HdaTemperatureJob()
    : DriveJob(jobs::HDATemperature, Kind::ATA, "HDATemperature") {}

std::unique_ptr<Job> HdaTemperatureJob::clone() const {
    return std::make_unique<HdaTemperatureJob>();
}

core::Status HdaTemperatureJob::runMethod(std::unique_ptr<core::xml::XmlElement>& response) {
    return reportEach(response);
}

core::Status HdaTemperatureJob::report(core::Device& device, XmlObject& drive) {
    ata_access::requireSct(device, ata::identify_device::word_206::DATA_TABLES);
    const Payload now = ata_access::sctStatus(device);
    const Payload table = readTable(device);
    putTemperatures(drive, now, CURRENT_TEMPERATURES);
    field_report::putField(drive, now, status::OverLimitCount);
    field_report::putField(drive, now, status::UnderLimitCount);
    putHistory(drive, table);
    return {};
}

}  // namespace orvel::interfaces::orveli::jobs
