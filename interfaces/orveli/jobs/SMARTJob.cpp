#include "interfaces/orveli/jobs/SMARTJob.h"

#include "core/StatusWords.h"
#include "core/Strings.h"
#include "features/FeatureStatuses.h"
#include "features/JobConstants.h"
#include "features/JobProperties.h"
#include "interfaces/orveli/access/DriveKind.h"
#include "interfaces/orveli/jobs/NvmeLogs.h"
#include "interfaces/orveli/jobs/SmartAttributes.h"
#include "protocols/ata/Smart.h"
#include "protocols/norvo/Structures.h"
#include "protocols/norvo/Vendor.h"
#include "protocols/nvme/Structures.h"
#include "protocols/nvme/Temperature.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace orvel::interfaces::orveli::jobs {

using core::Device;
using core::Payload;
using core::Status;
using core::strings::toHexString;
using core::strings::toString;
using core::xml::XmlObject;
using protocols::readNumber;
namespace health = protocols::norvo::health_statistics;
namespace norvo = protocols::norvo;
namespace nvme = protocols::nvme;
namespace smart_health = nvme::smart_health_log;

namespace {

constexpr const char* TITLE = "SMART Attributes";
constexpr const char* PASS = "Pass";
constexpr const char* FAIL = "Fail";
constexpr const char* HEXADECIMAL_DIGITS = "0123456789abcdefABCDEF";
constexpr std::uint8_t BEST = 100;

/// An attribute as it is shown.
struct Line {
    std::uint8_t id = 0;
    std::uint16_t flags = 0;
    std::uint8_t normalized = BEST;
    std::uint8_t worst = BEST;
    std::uint8_t threshold = 0;
    bool hasFailed = false;
    std::string raw = {};
};

// SATA.

std::vector<Line> linesOfSata(Device& device) {
    std::vector<Line> lines;
    for (const SmartAttribute& attribute : readSmartAttributes(device)) {
        lines.push_back({attribute.id, attribute.flags, attribute.normalized, attribute.worst,
                         attribute.threshold, attribute.isPreFailure() && attribute.isAtThreshold(),
                         toString(attribute.raw)});
    }
    return lines;
}

// NVMe.

/// What makes the normalized value.
enum class Scale {
    COUNT,    ///< nothing: the best value always
    SPARE,    ///< the percentage that is left
    WEAR,     ///< what the percentage that is used leaves
    KELVINS,  ///< nothing, and the raw value is in degrees Celsius
    UNITS,    ///< nothing, and the raw value is in units of 32 MiB, as that of SATA drives
};

enum class Source { SMART_HEALTH, HEALTH_STATISTICS };

struct NvmeRow {
    std::uint8_t id;
    Source source;
    protocols::Field field;
    Scale scale;
};

// clang-format off
constexpr NvmeRow NVME_ROWS[] = {
//   id    source                     field                                       scale
    {0x09, Source::SMART_HEALTH,      smart_health::PowerOnHours,                 Scale::COUNT},
    {0x0C, Source::SMART_HEALTH,      smart_health::PowerCycles,                  Scale::COUNT},
    {0xAA, Source::SMART_HEALTH,      smart_health::AvailableSpare,               Scale::SPARE},
    {0xAB, Source::HEALTH_STATISTICS, health::ProgramFailCount,                   Scale::COUNT},
    {0xAC, Source::HEALTH_STATISTICS, health::EraseFailCount,                     Scale::COUNT},
    {0xAD, Source::HEALTH_STATISTICS, health::AverageNandEraseCycles,             Scale::COUNT},
    {0xB8, Source::HEALTH_STATISTICS, health::EndToEndErrorDetectionCount,        Scale::COUNT},
    {0xBB, Source::SMART_HEALTH,      smart_health::MediaAndDataIntegrityErrors,  Scale::COUNT},
    {0xC0, Source::SMART_HEALTH,      smart_health::UnsafeShutdowns,              Scale::COUNT},
    {0xC2, Source::SMART_HEALTH,      smart_health::CompositeTemperature,         Scale::KELVINS},
    {0xC7, Source::HEALTH_STATISTICS, health::CrcErrorCount,                      Scale::COUNT},
    {0xE2, Source::HEALTH_STATISTICS, health::TimedWorkloadMediaWear,             Scale::COUNT},
    {0xE3, Source::HEALTH_STATISTICS, health::TimedWorkloadHostReads,             Scale::COUNT},
    {0xE4, Source::HEALTH_STATISTICS, health::TimedWorkloadTimer,                 Scale::COUNT},
    {0xE9, Source::SMART_HEALTH,      smart_health::PercentageUsed,               Scale::WEAR},
    {0xEA, Source::HEALTH_STATISTICS, health::ThermalThrottleStatus,              Scale::COUNT},
    {0xF1, Source::SMART_HEALTH,      smart_health::DataUnitsWritten,             Scale::UNITS},
    {0xF2, Source::SMART_HEALTH,      smart_health::DataUnitsRead,                Scale::UNITS},
    {0xF9, Source::HEALTH_STATISTICS, health::MediaBytesWritten,                  Scale::COUNT},
};

// clang-format on

constexpr std::uint16_t COUNTER_FLAGS = protocols::ata::smart_attribute_flags::ONLINE_COLLECTION |
                                        protocols::ata::smart_attribute_flags::EVENT_COUNT |
                                        protocols::ata::smart_attribute_flags::SELF_PRESERVING;

void fillSpare(Line& line, const Payload& page) {
    line.flags |= protocols::ata::smart_attribute_flags::PRE_FAILURE;
    line.normalized = static_cast<std::uint8_t>(readNumber(page, smart_health::AvailableSpare));
    line.worst = line.normalized;
    line.threshold =
        static_cast<std::uint8_t>(readNumber(page, smart_health::AvailableSpareThreshold));
    line.hasFailed =
        nvme::readBits(page, smart_health::CriticalWarning, nvme::critical_warning::SPARE) != 0;
}

void fillWear(Line& line, const Payload& page) {
    const std::uint64_t used = readNumber(page, smart_health::PercentageUsed);
    line.normalized = static_cast<std::uint8_t>(BEST - std::min<std::uint64_t>(used, BEST));
    line.worst = line.normalized;
}

void fillTemperature(Line& line, const Payload& page) {
    const std::uint64_t kelvins = readNumber(page, smart_health::CompositeTemperature);
    line.raw = toString(static_cast<std::int64_t>(kelvins) - nvme::ZERO_CELSIUS);
}

/// 0 K stands for a temperature that the drive doesn't tell.
bool isTold(const NvmeRow& row, const Payload& page) {
    return row.scale != Scale::KELVINS || readNumber(page, row.field) != 0;
}

/// Of thousands of 512 bytes; what isn't full yet doesn't count.
void fillUnits(Line& line, const Payload& page, const protocols::Field& field) {
    // 512,000 by 32 MiB, in lowest terms.
    constexpr protocols::Number128 FACTOR = 125;
    constexpr protocols::Number128 DIVISOR = 8192;
    const protocols::Number128 thousands = protocols::readWideNumber(page, field);
    line.raw =
        protocols::toText(thousands / DIVISOR * FACTOR + thousands % DIVISOR * FACTOR / DIVISOR);
}

Line lineOf(const NvmeRow& row, const Payload& page) {
    Line line;
    line.id = row.id;
    line.flags = COUNTER_FLAGS;
    line.raw = protocols::valueAsText(page, row.field);
    switch (row.scale) {
    case Scale::COUNT:
        break;
    case Scale::SPARE:
        fillSpare(line, page);
        break;
    case Scale::WEAR:
        fillWear(line, page);
        break;
    case Scale::KELVINS:
        fillTemperature(line, page);
        break;
    case Scale::UNITS:
        fillUnits(line, page, row.field);
        break;
    }
    // As with SATA drives, a threshold of zero never fails.
    if (line.threshold != 0 && line.normalized <= line.threshold) line.hasFailed = true;
    return line;
}

std::vector<Line> linesOfNvme(Device& device) {
    NvmeLogs logs(device);
    std::vector<Line> lines;
    for (const NvmeRow& row : NVME_ROWS) {
        const Payload* page = row.source == Source::SMART_HEALTH
                                  ? &logs.smartHealth()
                                  : logs.findVendorPage(norvo::log_pages::HEALTH_STATISTICS);
        if (page != nullptr && isTold(row, *page)) lines.push_back(lineOf(row, *page));
    }
    return lines;
}

// Both.

/// What the user means by an identifier; nothing for text that can't be one.
std::optional<std::uint8_t> readId(const std::string& text) {
    constexpr std::size_t DECIMAL_DIGITS = 3;
    const bool hasPrefix = core::strings::startsWith(text, "0x", true);
    const std::string digits = hasPrefix ? text.substr(2) : text;
    if (digits.empty() || digits.size() > DECIMAL_DIGITS) return std::nullopt;
    const bool isDecimal =
        !hasPrefix && digits.size() == DECIMAL_DIGITS && core::strings::isNumeric(digits);
    if (digits.find_first_not_of(HEXADECIMAL_DIGITS) != std::string::npos) return std::nullopt;
    const std::uint64_t id =
        isDecimal ? core::strings::toInteger(digits) : core::strings::toHexInteger(digits);
    if (id > UINT8_MAX) return std::nullopt;
    return static_cast<std::uint8_t>(id);
}

/// Leaves the line that the user wants. Throws 10/36 with what was asked for if there is none.
void keep(std::vector<Line>& lines, const std::string& idText) {
    const auto id = readId(idText);
    std::erase_if(lines, [&](const Line& line) { return !id || line.id != *id; });
    if (!lines.empty()) return;
    throw core::withWords(orvel::features::statuses::invalidProperty(),
                          "There is no SMART attribute " + idText + ".");
}

XmlObject& addLine(XmlObject& drive, const Line& line) {
    const std::string id = toHexString(line.id, 2);
    XmlObject& object = addSection(drive, id);
    object.addValue("ID", id);
    object.addValue("Description", protocols::ata::smartAttributeName(line.id));
    object.addValue("Normalized", toString(line.normalized));
    object.addValue("Worst", toString(line.worst));
    object.addValue("Threshold", toString(line.threshold));
    object.addValue("Status", "0x" + toHexString(line.flags, 4));
    object.addValue("Action", line.hasFailed ? FAIL : PASS);
    object.addValue("Raw", line.raw);
    return object;
}

}  // namespace

SMARTJob::SMARTJob() : DriveJob(SMART, Kind::ANY, TITLE) {}

std::unique_ptr<Job> SMARTJob::clone() const {
    return std::make_unique<SMARTJob>();
}

Status SMARTJob::runGetProperties(std::unique_ptr<core::xml::XmlElement>& response) {
    return reportEach(response);
}

Status SMARTJob::report(Device& device, XmlObject& drive) {
    auto lines = isNvme(device) ? linesOfNvme(device) : linesOfSata(device);
    const auto id = findArgument(orvel::features::smart::ID());
    if (id && !id->empty()) keep(lines, *id);
    for (const Line& line : lines)
        keepRequested(addLine(drive, line));
    return {};
}

}  // namespace orvel::interfaces::orveli::jobs
