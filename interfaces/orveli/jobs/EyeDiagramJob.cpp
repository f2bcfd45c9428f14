#include "interfaces/orveli/jobs/EyeDiagramJob.h"

#include "core/Strings.h"
#include "features/FeatureStatuses.h"
#include "features/JobConstants.h"
#include "features/JobProperties.h"
#include "interfaces/orveli/access/NvmeAccess.h"
#include "interfaces/orveli/jobs/FieldReport.h"
#include "protocols/norvo/Structures.h"
#include "protocols/norvo/Vendor.h"

#include <algorithm>
#include <cstdint>
#include <string>

namespace orvel::interfaces::orveli::jobs {

using core::Payload;
using core::xml::XmlObject;
namespace eye = protocols::norvo::eye_diagram;
namespace nvme = protocols::nvme;
namespace serdes = protocols::norvo::serdes;

namespace {

constexpr std::uint64_t LAYOUT_VERSION = 1;
constexpr const char* LEGEND = "1 to 9 = error rate of 10^-1 to 10^-9 or less, . = no errors";
constexpr const char* GROUP_NAMES[serdes::GROUPS] = {"A", "B"};

struct Lane {
    std::uint8_t group;
    std::uint16_t lane;
};

std::uint8_t groupOf(const std::string& text) {
    for (std::uint8_t group = 0; group < serdes::GROUPS; ++group) {
        if (core::strings::equals(text, GROUP_NAMES[group], true)) return group;
    }
    throw features::statuses::invalidSerdesGroup();
}

std::uint16_t laneOf(const std::string& text) {
    const bool isLane =
        core::strings::isNumeric(text) && core::strings::toInteger(text) < serdes::LANES;
    if (!isLane) throw features::statuses::invalidSerdesLane();
    return static_cast<std::uint16_t>(core::strings::toInteger(text));
}

/// A drive refuses what it doesn't have. The defaults are what every drive with the page has.
core::Status refusalOf(const nvme::AdminCommand& command, const nvme::StatusCode& status,
                       const Lane& wanted) {
    if (status == nvme::status_codes::INVALID_LOG_PAGE)
        return features::statuses::featureNotSupportedByDrive();
    if (status == nvme::status_codes::INVALID_FIELD_IN_COMMAND) {
        if (wanted.lane != 0) return features::statuses::invalidSerdesLane();
        if (wanted.group != serdes::GROUP_A) return features::statuses::invalidSerdesGroup();
    }
    return nvme_access::refusal(command, status);
}

bool isDiagramOf(const Payload& page, const Lane& wanted) {
    return page.size() >= eye::SIZE &&
           protocols::readNumber(page, eye::Version) == LAYOUT_VERSION &&
           protocols::readNumber(page, eye::Group) == wanted.group &&
           protocols::readNumber(page, eye::Lane) == wanted.lane &&
           protocols::readNumber(page, eye::Columns) == eye::COLUMNS &&
           protocols::readNumber(page, eye::Rows) == eye::ROWS;
}

Payload readDiagram(core::Device& device, const Lane& wanted) {
    const auto command = nvme::getLogPage({.logPage = protocols::norvo::log_pages::EYE_DIAGRAM,
                                           .bytes = eye::SIZE,
                                           .logSpecificField = wanted.group,
                                           .logSpecificIdentifier = wanted.lane});
    const auto answer = nvme_access::ask(device, command);
    if (!answer.completion.isSuccess()) throw refusalOf(command, answer.completion.status, wanted);
    if (!isDiagramOf(answer.data, wanted)) throw features::statuses::dataRetrievalFailed();
    return answer.data;
}

char symbolOf(std::uint8_t cell) {
    constexpr std::uint8_t LARGEST_DIGIT = 9;
    if (cell == 0) return '.';
    return static_cast<char>('0' + std::min(cell, LARGEST_DIGIT));
}

/// The row in a frame, so that nobody takes digits for a number.
std::string rowText(const Payload& page, std::uint32_t row) {
    std::string text = "|";
    for (std::uint32_t column = 0; column < eye::COLUMNS; ++column)
        text += symbolOf(*page.at(eye::CELLS.offset + row * eye::COLUMNS + column));
    return text + "|";
}

}  // namespace

EyeDiagramJob::EyeDiagramJob() : DriveJob(jobs::EyeDiagram, Kind::NVME, "EyeDiagram") {}

std::unique_ptr<Job> EyeDiagramJob::clone() const {
    return std::make_unique<EyeDiagramJob>();
}

core::Status EyeDiagramJob::runGetProperties(std::unique_ptr<core::xml::XmlElement>& response) {
    return reportEach(response);
}

core::Status EyeDiagramJob::report(core::Device& device, XmlObject& drive) {
    const Lane wanted{
        groupOf(findArgument(features::eye_diagram::Group()).value_or(GROUP_NAMES[0])),
        laneOf(findArgument(features::eye_diagram::Lane()).value_or("0"))};
    requireNorvo(device);
    const Payload page = readDiagram(device, wanted);
    put(drive, features::eye_diagram::Group(), GROUP_NAMES[wanted.group]);
    put(drive, features::eye_diagram::Lane(), wanted.lane);
    for (const auto& field : {eye::Columns, eye::Rows, eye::EyeWidth, eye::EyeHeight})
        field_report::putDescribed(drive, page, field);
    drive.addValue("Legend", LEGEND);
    for (std::uint32_t row = 0; row < eye::ROWS; ++row)
        drive.addValue("Row " + core::strings::toString(row, 2), rowText(page, row));
    keepRequested(drive);
    return {};
}

}  // namespace orvel::interfaces::orveli::jobs
