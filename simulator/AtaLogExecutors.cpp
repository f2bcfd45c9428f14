// Reading and writing the logs of SATA drives.
#include "protocols/ata/Checksum.h"
#include "protocols/ata/DeviceStatistics.h"
#include "protocols/ata/Logs.h"
#include "protocols/ata/PhyEventCounters.h"
#include "simulator/AtaExecutors.h"

#include <algorithm>

namespace orvel::simulator {

using namespace protocols::ata;
namespace id = identify_device;

namespace {

constexpr bool YES = true;
constexpr bool NO = false;
constexpr std::uint64_t VERSION = 1;

/// Logs in which hosts keep what they like.
constexpr std::uint8_t FIRST_HOST_LOG = 0x80;
constexpr std::uint8_t LAST_HOST_LOG = 0x9F;
constexpr std::size_t HOST_LOG_PAGES = 16;

bool isHostLog(std::uint8_t address) {
    return address >= FIRST_HOST_LOG && address <= LAST_HOST_LOG;
}

/// Exactly a page, whatever was stored.
core::Payload pageOf(const core::Payload& stored) {
    core::Payload page(BLOCK_SIZE);
    page.copyFrom(stored);
    return page;
}

/// The first page of logs whose pages have numbers; both have the same layout.
core::Payload listOfPages(const std::vector<std::uint8_t>& numbers) {
    namespace fields = device_statistics_list;
    const core::Payload page(fields::SIZE);
    writeNumber(page, fields::RevisionNumber, VERSION);
    writeNumber(page, fields::NumberOfEntries, numbers.size());
    for (std::uint32_t i = 0; i < numbers.size(); ++i)
        *page.at(fields::PAGE_NUMBERS.offset + i) = numbers[i];
    return page;
}

/// Pages that the drive doesn't have read as zeroes.
core::Payload makeDeviceStatistics(const AtaDrive& drive) {
    if (drive.deviceStatistics.empty()) return {};
    std::vector<std::uint8_t> numbers = {statistics_page::LIST_OF_PAGES};
    for (const auto& [number, page] : drive.deviceStatistics) {
        if (number != statistics_page::LIST_OF_PAGES) numbers.push_back(number);
    }
    core::Payload log = listOfPages(numbers);
    for (std::uint32_t number = 1; number <= numbers.back(); ++number) {
        const auto page = drive.deviceStatistics.find(static_cast<std::uint8_t>(number));
        log.append(page == drive.deviceStatistics.end() ? core::Payload(BLOCK_SIZE)
                                                        : pageOf(page->second));
    }
    return log;
}

/// A drive without a queue has no commands that failed in it.
core::Payload makeNcqErrorLog(const AtaDrive& /*drive*/) {
    constexpr std::uint8_t NOT_QUEUED = 0x80;
    const core::Payload log(BLOCK_SIZE);
    *log.at(0) = NOT_QUEUED;
    writeChecksum(log);
    return log;
}

core::Payload makePhyCounters(const AtaDrive& drive) {
    constexpr std::uint8_t SIZE = 4;
    constexpr std::uint64_t LARGEST = UINT32_MAX;
    constexpr std::size_t MOST = 84;  // that fit
    std::vector<PhyEventCounter> counters;
    for (const auto& [identifier, value] : drive.phyEventCounters) {
        if (identifier == 0 || counters.size() == MOST) continue;  // 0 marks the end
        counters.push_back({identifier, SIZE, std::min(value, LARGEST)});
    }
    return makePhyEventCounters(counters);
}

core::Payload makeIdentifyDeviceLog(const AtaDrive& drive) {
    core::Payload log = listOfPages(
        {identify_device_page::LIST_OF_PAGES, identify_device_page::COPY_OF_IDENTIFY_DEVICE_DATA});
    log.append(makeIdentifyDevice(drive));
    return log;
}

/// What a log address has when no command has left anything there.
core::Payload makeEmptyPage(const AtaDrive& /*drive*/) {
    return core::Payload(BLOCK_SIZE);
}

/// What hosts have written, and the vendor's.
core::Payload makeStoredLog(const AtaDrive& drive, std::uint8_t address) {
    static const std::vector<StoredBytes> NOTHING;
    constexpr std::size_t MOST_PAGES = 0xFFFF;
    const auto found = drive.otherLogs.find(address);
    const auto& stored = found == drive.otherLogs.end() ? NOTHING : found->second;
    const auto pages = isHostLog(address) ? HOST_LOG_PAGES : std::min(stored.size(), MOST_PAGES);
    core::Payload log(static_cast<std::uint32_t>(pages) * BLOCK_SIZE);
    for (std::size_t i = 0; i < std::min(stored.size(), pages); ++i) {
        const core::Payload page = pageOf(stored[i]);
        std::copy_n(page.data(), page.size(), log.data() + i * BLOCK_SIZE);
    }
    return log;
}

struct LogRow {
    std::uint8_t address;
    bool isSmart;
    bool isGeneralPurpose;
    const id::Bits* capability;  ///< null: every drive may have the log
    core::Payload (*make)(const AtaDrive& drive);
};

// clang-format off
constexpr LogRow LOGS[] = {
//   address                                          SMART GPL  capability                        maker
    {log_address::SUMMARY_SMART_ERROR,                YES,  NO,  &id::word_84::SMART_ERROR_LOGGING, makeSummaryErrorLog},
    {log_address::COMPREHENSIVE_SMART_ERROR,          YES,  NO,  &id::word_84::SMART_ERROR_LOGGING, makeComprehensiveErrorLog},
    {log_address::EXTENDED_COMPREHENSIVE_SMART_ERROR, NO,   YES, &id::word_84::SMART_ERROR_LOGGING, makeExtendedErrorLog},
    {log_address::DEVICE_STATISTICS,                  YES,  YES, nullptr,                           makeDeviceStatistics},
    {log_address::SMART_SELF_TEST,                    YES,  NO,  &id::word_84::SMART_SELF_TEST,     makeSelfTestLog},
    {log_address::EXTENDED_SMART_SELF_TEST,           NO,   YES, &id::word_84::SMART_SELF_TEST,     makeExtendedSelfTestLog},
    {log_address::NCQ_COMMAND_ERROR,                  NO,   YES, &id::word_76::NCQ,                 makeNcqErrorLog},
    {log_address::PHY_EVENT_COUNTERS,                 NO,   YES, &id::word_76::PHY_EVENT_COUNTERS,  makePhyCounters},
    {log_address::IDENTIFY_DEVICE_DATA,               YES,  YES, nullptr,                           makeIdentifyDeviceLog},
    {log_address::SCT_COMMAND_STATUS,                 YES,  YES, &id::word_206::SCT,                makeSctStatus},
    {log_address::SCT_DATA_TRANSFER,                  YES,  YES, &id::word_206::SCT,                makeEmptyPage},
};

// clang-format on

bool isReadBy(const LogRow& row, LogAccess access) {
    return access == LogAccess::SMART ? row.isSmart : row.isGeneralPurpose;
}

core::Payload makeContent(const AtaDrive& drive, std::uint8_t address, LogAccess access) {
    const auto* const row = std::ranges::find(LOGS, address, &LogRow::address);
    if (row == std::end(LOGS)) return makeStoredLog(drive, address);
    if (!isReadBy(*row, access)) return {};
    if (row->capability && !supports(drive, *row->capability)) return {};
    return row->make(drive);
}

core::Payload makeDirectory(const AtaDrive& drive, LogAccess access) {
    constexpr std::uint32_t MOST_SMART_PAGES = 0xFF;
    constexpr std::uint8_t LAST_ADDRESS = 0xFF;
    const core::Payload directory(log_directory::SIZE);
    writeNumber(directory, log_directory::LoggingVersion, VERSION);
    for (unsigned i = 1; i <= LAST_ADDRESS; ++i) {
        const auto address = static_cast<std::uint8_t>(i);
        const std::uint32_t pages = makeContent(drive, address, access).size() / BLOCK_SIZE;
        if (access == LogAccess::SMART) {
            writeNumber(directory, smartLogPages(address), std::min(pages, MOST_SMART_PAGES));
        } else {
            writeNumber(directory, generalPurposeLogPages(address), pages);
        }
    }
    return directory;
}

/// Which pages of which log a command is about.
struct LogRange {
    std::uint8_t address;
    std::uint32_t firstPage;
    std::uint32_t pages;
};

LogRange smartRange(const TaskFile& fields) {
    return {static_cast<std::uint8_t>(fields.lba), 0, fields.count};
}

LogRange generalPurposeRange(const TaskFile& fields) {
    constexpr std::uint64_t BYTE = 0xFF;
    const auto page = (fields.lba >> 8U & BYTE) | (fields.lba >> 32U & BYTE) << 8U;
    return {static_cast<std::uint8_t>(fields.lba), static_cast<std::uint32_t>(page), fields.count};
}

bool isWithin(const LogRange& range, std::uint32_t pages) {
    return range.pages > 0 && range.firstPage + range.pages <= pages;
}

AtaAnswer read(AtaDrive& drive, const LogRange& range, LogAccess access) {
    const core::Payload log = makeLog(drive, range.address, access);
    if (range.address == log_address::SCT_DATA_TRANSFER && log.size() > 0) {
        return readSctData(drive, range.pages);
    }
    if (!isWithin(range, log.size() / BLOCK_SIZE)) return aborted();
    const std::uint8_t* const first = log.data() + std::size_t{range.firstPage} * BLOCK_SIZE;
    return {.output = {first, range.pages * BLOCK_SIZE}};
}

AtaAnswer writeHostLog(AtaDrive& drive, const LogRange& range, const core::Payload& input) {
    if (!isWithin(range, HOST_LOG_PAGES)) return aborted();
    auto& pages = drive.otherLogs[range.address];
    pages.resize(HOST_LOG_PAGES, StoredBytes(BLOCK_SIZE));
    for (std::uint32_t i = 0; i < range.pages; ++i) {
        const core::Payload page(input.data() + std::size_t{i} * BLOCK_SIZE, BLOCK_SIZE);
        pages[range.firstPage + i] = StoredBytes(page);
    }
    return {};
}

AtaAnswer write(AtaDrive& drive, const LogRange& range, const core::Payload& input) {
    if (input.size() / BLOCK_SIZE < range.pages) return aborted();
    if (isHostLog(range.address)) return writeHostLog(drive, range, input);
    const bool isSct = range.address == log_address::SCT_COMMAND_STATUS &&
                       supports(drive, id::word_206::SCT) && isWithin(range, 1);
    return isSct ? executeSct(drive, input) : aborted();
}

}  // namespace

core::Payload makeLog(const AtaDrive& drive, std::uint8_t address, LogAccess access) {
    return address == log_address::DIRECTORY ? makeDirectory(drive, access)
                                             : makeContent(drive, address, access);
}

AtaAnswer executeSmartReadLog(AtaDrive& drive, const AtaRequest& request) {
    return read(drive, smartRange(request.fields), LogAccess::SMART);
}

AtaAnswer executeSmartWriteLog(AtaDrive& drive, const AtaRequest& request) {
    return write(drive, smartRange(request.fields), request.input);
}

AtaAnswer executeReadLogExt(AtaDrive& drive, const AtaRequest& request) {
    constexpr std::uint16_t RESET_COUNTERS = 1U << 0;  // the feature of this log
    const LogRange range = generalPurposeRange(request.fields);
    AtaAnswer answer = read(drive, range, LogAccess::GENERAL_PURPOSE);
    const bool isReset = range.address == log_address::PHY_EVENT_COUNTERS &&
                         (request.fields.feature & RESET_COUNTERS) != 0;
    if (answer.error == 0 && isReset) {
        for (auto& [identifier, value] : drive.phyEventCounters)
            value = 0;
    }
    return answer;
}

AtaAnswer executeWriteLogExt(AtaDrive& drive, const AtaRequest& request) {
    return write(drive, generalPurposeRange(request.fields), request.input);
}

}  // namespace orvel::simulator
