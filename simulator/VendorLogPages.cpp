// The log pages that are Norvo's own.
#include "protocols/norvo/Structures.h"
#include "protocols/norvo/Vendor.h"
#include "simulator/NvmeExecutors.h"

#include <algorithm>
#include <cstdlib>

namespace orvel::simulator {

using namespace protocols::nvme;
namespace norvo = protocols::norvo;
namespace eye = norvo::eye_diagram;

namespace {

/// Half the size of an open eye, in places of the diagram.
struct Opening {
    std::int64_t columns;  ///< in hundredths
    std::int64_t rows;     ///< in hundredths
};

constexpr std::int64_t HUNDREDTHS = 100;

/// The diagram is one unit interval wide, and each of its rows stands for so many millivolts.
constexpr std::int64_t MILLIVOLTS_OF_A_ROW = 10;

/// The square of a distance from the middle, in thousandths of that of the opening's edge.
std::int64_t reach(std::int64_t distance, std::int64_t opening) {
    constexpr std::int64_t EDGE = 1000;
    constexpr std::int64_t FARTHEST = 100 * EDGE;
    if (opening == 0) return FARTHEST;
    return std::min(FARTHEST, EDGE * distance * distance / (opening * opening));
}

/// An ellipse without errors; around it, the worse the farther away.
std::uint8_t cell(std::int64_t column, std::int64_t row, const Opening& opening) {
    constexpr std::int64_t EDGE = 1000;
    constexpr std::int64_t STEP = 300;
    constexpr std::int64_t BEST_RATE = 12;
    const std::int64_t x = HUNDREDTHS * (2 * column + 1 - std::int64_t{eye::COLUMNS}) / 2;
    const std::int64_t y = HUNDREDTHS * (2 * row + 1 - std::int64_t{eye::ROWS}) / 2;
    const std::int64_t place = reach(x, opening.columns) + reach(y, opening.rows);
    if (place < EDGE) return 0;
    return static_cast<std::uint8_t>(std::max(std::int64_t{1}, BEST_RATE - (place - EDGE) / STEP));
}

/// Lanes differ a little from the one whose size the drive remembers.
std::int64_t ofLane(std::uint64_t size, std::uint32_t group, std::uint32_t lane) {
    constexpr std::uint64_t PERCENT_LESS = 3;
    const std::uint64_t less = PERCENT_LESS * (group * norvo::serdes::LANES + lane);
    return static_cast<std::int64_t>(size - size * less / HUNDREDTHS);
}

core::Payload eyeDiagram(const core::Payload& stored, std::uint32_t group, std::uint32_t lane) {
    constexpr std::uint64_t VERSION = 1;
    const std::int64_t width = ofLane(protocols::readNumber(stored, eye::EyeWidth), group, lane);
    const std::int64_t height = ofLane(protocols::readNumber(stored, eye::EyeHeight), group, lane);
    core::Payload page(eye::SIZE);
    protocols::writeNumber(page, eye::Version, VERSION);
    protocols::writeNumber(page, eye::Group, group);
    protocols::writeNumber(page, eye::Lane, lane);
    protocols::writeNumber(page, eye::Columns, eye::COLUMNS);
    protocols::writeNumber(page, eye::Rows, eye::ROWS);
    protocols::writeNumber(page, eye::EyeWidth, static_cast<std::uint64_t>(width));
    protocols::writeNumber(page, eye::EyeHeight, static_cast<std::uint64_t>(height));

    const Opening opening{width * std::int64_t{eye::COLUMNS} / 2,
                          height * HUNDREDTHS / MILLIVOLTS_OF_A_ROW / 2};
    for (std::uint32_t i = 0; i < eye::CELLS.count; ++i)
        *page.at(eye::CELLS.offset + i) = cell(i % eye::COLUMNS, i / eye::COLUMNS, opening);
    return page;
}

NvmeAnswer makeEyeDiagram(const core::Payload& stored, const AdminCommandFields& fields) {
    const std::uint32_t group = readBits(fields.cdw10, get_log_page_cdw10::LSP);
    const std::uint32_t lane = readBits(fields.cdw11, get_log_page_cdw11::LSI);
    if (group >= norvo::serdes::GROUPS || lane >= norvo::serdes::LANES) {
        return refusal(status_codes::INVALID_FIELD_IN_COMMAND);
    }
    if (stored.size() < eye::SIZE) return refusal(status_codes::INVALID_LOG_PAGE);
    NvmeAnswer answer;
    answer.output = eyeDiagram(stored, group, lane);
    return answer;
}

/// The statistics are there only while somebody wants them to be collected.
bool isOff(const NvmeDrive& drive, std::uint32_t page) {
    return (page == norvo::log_pages::READ_LATENCY_STATISTICS ||
            page == norvo::log_pages::WRITE_LATENCY_STATISTICS) &&
           !isLatencyTracked(drive);
}

}  // namespace

NvmeAnswer makeVendorLogPage(const NvmeDrive& drive, const NvmeRequest& request) {
    const auto id =
        static_cast<std::uint8_t>(readBits(request.fields.cdw10, get_log_page_cdw10::LID));
    const auto found = drive.vendorLogs.find(id);
    if (found == drive.vendorLogs.end() || isOff(drive, id)) {
        return refusal(status_codes::INVALID_LOG_PAGE);
    }
    if (id == norvo::log_pages::EYE_DIAGRAM) return makeEyeDiagram(found->second, request.fields);
    NvmeAnswer answer;
    answer.output = found->second.copy();
    return answer;
}

}  // namespace orvel::simulator
