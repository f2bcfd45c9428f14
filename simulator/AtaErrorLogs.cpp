// SMART error logs and self-test logs of SATA drives, made from what the drive remembers.
#include "protocols/ata/Checksum.h"
#include "protocols/ata/Logs.h"
#include "simulator/AtaExecutors.h"

#include <algorithm>

namespace orvel::simulator {

using namespace protocols::ata;
using protocols::Entries;
using protocols::Field;

namespace {

constexpr std::uint64_t VERSION = 1;

/// How many errors a drive keeps.
constexpr std::uint32_t CAPACITY = 20;

constexpr std::uint32_t pagesFor(std::uint32_t capacity, const Entries& entries) {
    return (capacity + entries.count - 1) / entries.count;
}

/// `count` of the newest ones, the oldest of them first: entry 0 gets index 1.
std::vector<core::Payload> oldestFirst(const std::deque<StoredBytes>& newestFirst,
                                       std::uint32_t count, std::uint32_t size) {
    std::vector<core::Payload> ordered;
    const auto number = std::min<std::size_t>(newestFirst.size(), count);
    for (std::size_t i = number; i > 0; --i) {
        core::Payload entry(size);
        entry.copyFrom(newestFirst[i - 1]);
        ordered.push_back(entry);
    }
    return ordered;
}

/// A page of a log behind the ones before.
void addPage(core::Payload& log, const core::Payload& page) {
    writeChecksum(page);
    log.append(page);
}

/// Fields of both forms, by the short one and the long one.
struct FieldPair {
    Field shortForm;
    Field longForm;
};

void copyFields(const core::Payload& to, std::uint32_t toOffset, const core::Payload& from,
                std::uint32_t fromOffset, std::span<const FieldPair> pairs) {
    for (auto [target, source] : pairs) {
        target.offset += toOffset;
        source.offset += fromOffset;
        writeBytes(to, target, readBytes(from, source));
    }
}

/// The LBA's bytes aren't in order in the long form.
void copyLba(const core::Payload& to, std::uint32_t toOffset, Field target,
             const core::Payload& from, std::uint32_t fromOffset, Field source) {
    target.offset += toOffset;
    source.offset += fromOffset;
    writeNumber(to, target, readSplitLba(from, source));
}

/// An error in the form of the logs that know no 48-bit commands.
core::Payload shortened(const core::Payload& error) {
    namespace extended = extended_error_log;
    namespace command = error_log_command;
    namespace extended_command = extended_error_log_command;
    // clang-format off
    static constexpr FieldPair COMMAND_FIELDS[] = {
        {command::DeviceControl, extended_command::DeviceControl},
        {command::Feature,       extended_command::Feature},
        {command::Count,         extended_command::Count},
        {command::Device,        extended_command::Device},
        {command::Command,       extended_command::Command},
        {command::Timestamp,     extended_command::Timestamp},
    };
    static constexpr FieldPair ERROR_FIELDS[] = {
        {error_log_error::Error,                    extended_error_log_error::Error},
        {error_log_error::Count,                    extended_error_log_error::Count},
        {error_log_error::Device,                   extended_error_log_error::Device},
        {error_log_error::Status,                   extended_error_log_error::Status},
        {error_log_error::ExtendedErrorInformation, extended_error_log_error::ExtendedErrorInformation},
        {error_log_error::State,                    extended_error_log_error::State},
        {error_log_error::LifeTimestamp,            extended_error_log_error::LifeTimestamp},
    };
    // clang-format on
    core::Payload entry(error_log::ERRORS.size);
    for (std::uint32_t i = 0; i < error_log::COMMANDS.count; ++i) {
        const std::uint32_t to = bytesOf(error_log::COMMANDS, i).offset;
        const std::uint32_t from = bytesOf(extended::COMMANDS, i).offset;
        copyFields(entry, to, error, from, COMMAND_FIELDS);
        copyLba(entry, to, command::LBA, error, from, extended_command::LBA7To0);
    }
    copyFields(entry, error_log::ERROR.offset, error, extended::ERROR.offset, ERROR_FIELDS);
    copyLba(entry, error_log::ERROR.offset, error_log_error::LBA, error, extended::ERROR.offset,
            extended_error_log_error::LBA7To0);
    return entry;
}

/// As many pages as the capacity takes. Index and count stand in the first one only.
core::Payload makeErrorLog(const AtaDrive& drive, std::uint32_t capacity) {
    const auto errors = oldestFirst(drive.errorLog, capacity, extended_error_log::ERRORS.size);
    core::Payload log;
    for (std::uint32_t page = 0; page < pagesFor(capacity, error_log::ERRORS); ++page) {
        const core::Payload bytes(error_log::SIZE);
        if (page == 0) {
            writeNumber(bytes, error_log::LogVersion, VERSION);
            writeNumber(bytes, error_log::ErrorLogIndex, errors.size());
            writeNumber(bytes, error_log::DeviceErrorCount, drive.errorCount);
        }
        for (std::uint32_t i = 0; i < error_log::ERRORS.count; ++i) {
            const std::uint32_t number = page * error_log::ERRORS.count + i;
            if (number < errors.size()) {
                writeEntry(bytes, error_log::ERRORS, i, shortened(errors[number]));
            }
        }
        addPage(log, bytes);
    }
    return log;
}

}  // namespace

core::Payload makeSummaryErrorLog(const AtaDrive& drive) {
    return makeErrorLog(drive, error_log::ERRORS.count);
}

core::Payload makeComprehensiveErrorLog(const AtaDrive& drive) {
    return makeErrorLog(drive, CAPACITY);
}

core::Payload makeExtendedErrorLog(const AtaDrive& drive) {
    namespace fields = extended_error_log;
    const auto errors = oldestFirst(drive.errorLog, CAPACITY, fields::ERRORS.size);
    core::Payload log;
    for (std::uint32_t page = 0; page < pagesFor(CAPACITY, fields::ERRORS); ++page) {
        const core::Payload bytes(fields::SIZE);
        if (page == 0) {
            writeNumber(bytes, fields::LogVersion, VERSION);
            writeNumber(bytes, fields::ErrorLogIndex, errors.size());
            writeNumber(bytes, fields::DeviceErrorCount, drive.errorCount);
        }
        for (std::uint32_t i = 0; i < fields::ERRORS.count; ++i) {
            const std::uint32_t number = page * fields::ERRORS.count + i;
            if (number < errors.size()) writeEntry(bytes, fields::ERRORS, i, errors[number]);
        }
        addPage(log, bytes);
    }
    return log;
}

core::Payload makeSelfTestLog(const AtaDrive& drive) {
    namespace fields = self_test_log;
    namespace entry = self_test_descriptor;
    namespace extended = extended_self_test_descriptor;
    // clang-format off
    static constexpr FieldPair PAIRS[] = {
        {entry::SelfTestNumber,  extended::SelfTestNumber},
        {entry::ExecutionStatus, extended::ExecutionStatus},
        {entry::LifeTimestamp,   extended::LifeTimestamp},
        {entry::Checkpoint,      extended::Checkpoint},
        {entry::FailingLBA,      extended::FailingLBA},
        {entry::VendorSpecific,  extended::VendorSpecific},
    };
    // clang-format on
    const auto results =
        oldestFirst(drive.selfTestResults, fields::DESCRIPTORS.count, extended::SIZE);
    const core::Payload log(fields::SIZE);
    writeNumber(log, fields::RevisionNumber, VERSION);
    writeNumber(log, fields::SelfTestIndex, results.size());
    for (std::uint32_t i = 0; i < results.size(); ++i)
        copyFields(log, bytesOf(fields::DESCRIPTORS, i).offset, results[i], 0, PAIRS);
    writeChecksum(log);
    return log;
}

core::Payload makeExtendedSelfTestLog(const AtaDrive& drive) {
    namespace fields = extended_self_test_log;
    const auto results = oldestFirst(drive.selfTestResults, fields::DESCRIPTORS.count,
                                     extended_self_test_descriptor::SIZE);
    const core::Payload log(fields::SIZE);
    writeNumber(log, fields::LogVersion, VERSION);
    writeNumber(log, fields::SelfTestIndex, results.size());
    for (std::uint32_t i = 0; i < results.size(); ++i)
        writeEntry(log, fields::DESCRIPTORS, i, results[i]);
    writeChecksum(log);
    return log;
}

}  // namespace orvel::simulator
