// The SMART commands but for logs and self-tests.
#include "protocols/ata/Checksum.h"
#include "protocols/ata/CommandCodes.h"
#include "protocols/ata/Smart.h"
#include "simulator/AtaExecutors.h"

namespace orvel::simulator {

using namespace protocols::ata;
namespace id = identify_device;

namespace {

std::optional<protocols::Field> attributeField(const AtaDrive& drive, std::uint8_t attribute,
                                               const protocols::Field& row) {
    for (std::uint32_t i = 0; i < smart_data::ATTRIBUTES.count; ++i) {
        const auto own = fieldOf(smart_data::ATTRIBUTES, i, smart_attribute::Id);
        if (attribute != 0 && readNumber(drive.smartData, own) == attribute) {
            return fieldOf(smart_data::ATTRIBUTES, i, row);
        }
    }
    return {};
}

/// An attribute without a threshold of its own always passes.
std::uint64_t thresholdOf(const AtaDrive& drive, std::uint64_t attribute) {
    namespace table = smart_thresholds;
    for (std::uint32_t i = 0; i < table::THRESHOLDS.count; ++i) {
        const auto own = fieldOf(table::THRESHOLDS, i, smart_threshold::Id);
        if (readNumber(drive.smartThresholds, own) == attribute) {
            return readNumber(drive.smartThresholds,
                              fieldOf(table::THRESHOLDS, i, smart_threshold::Threshold));
        }
    }
    return 0;
}

/// ATA-3, "Attribute thresholds": 00h always passes, FFh always fails.
bool isFailing(const AtaDrive& drive, std::uint32_t index) {
    constexpr std::uint64_t ALWAYS_FAILS = 0xFF;
    const auto read = [&](const protocols::Field& row) {
        return readNumber(drive.smartData, fieldOf(smart_data::ATTRIBUTES, index, row));
    };
    const std::uint64_t attribute = read(smart_attribute::Id);
    const std::uint64_t flags = read(smart_attribute::StatusFlags);
    if (attribute == 0 || (flags & smart_attribute_flags::PRE_FAILURE) == 0) return false;
    const std::uint64_t threshold = thresholdOf(drive, attribute);
    return threshold == ALWAYS_FAILS ||
           (threshold != 0 && read(smart_attribute::Current) <= threshold);
}

bool isEnabled(const AtaDrive& drive) {
    return id::isSet(drive.identifyDevice, id::word_85::SMART);
}

void enable(AtaDrive& drive, bool isOn) {
    id::writeBits(drive.identifyDevice, id::word_85::SMART, isOn ? 1 : 0);
}

AtaAnswer readData(const AtaDrive& drive, std::chrono::milliseconds now) {
    const core::Payload data = drive.smartData.copy();
    writeNumber(data, smart_data::SelfTestExecutionStatus, selfTestStatus(drive, now));
    writeChecksum(data);
    return {.output = data};
}

AtaAnswer readThresholds(const AtaDrive& drive) {
    const core::Payload thresholds = drive.smartThresholds.copy();
    writeChecksum(thresholds);
    return {.output = thresholds};
}

AtaAnswer returnStatus(const AtaDrive& drive) {
    constexpr unsigned KEY_SHIFT = 8;
    return {.lba = std::uint64_t{smartStatus(drive)} << KEY_SHIFT};
}

AtaAnswer disable(AtaDrive& drive, std::chrono::milliseconds now) {
    abortSelfTest(drive, ata_self_test_results::ABORTED_BY_HOST, now);
    enable(drive, false);
    return {};
}

}  // namespace

std::optional<std::uint64_t> rawAttribute(const AtaDrive& drive, std::uint8_t attribute) {
    const auto field = attributeField(drive, attribute, smart_attribute::Raw);
    if (!field) return {};
    return readNumber(drive.smartData, *field);
}

void setRawAttribute(AtaDrive& drive, std::uint8_t attribute, std::uint64_t value) {
    const auto field = attributeField(drive, attribute, smart_attribute::Raw);
    if (field) writeNumber(drive.smartData, *field, value);
}

std::uint16_t smartStatus(const AtaDrive& drive) {
    for (std::uint32_t i = 0; i < smart_data::ATTRIBUTES.count; ++i) {
        if (isFailing(drive, i)) return SMART_THRESHOLD_EXCEEDED;
    }
    return SMART_GOOD;
}

AtaAnswer executeSmart(AtaDrive& drive, const AtaRequest& request) {
    constexpr std::uint64_t KEY_MASK = 0xFFFF00;
    if ((request.fields.lba & KEY_MASK) != SMART_KEY) return aborted();
    if (request.fields.feature == smart_subcommands::ENABLE_OPERATIONS) {
        enable(drive, true);
        return {};
    }
    if (!isEnabled(drive)) return aborted();
    // clang-format off
    switch (request.fields.feature) {
    case smart_subcommands::READ_DATA:                  return readData(drive, request.now);
    case smart_subcommands::READ_THRESHOLDS:            return readThresholds(drive);
    case smart_subcommands::EXECUTE_OFF_LINE_IMMEDIATE: return executeOfflineImmediate(drive, request);
    case smart_subcommands::READ_LOG:                   return executeSmartReadLog(drive, request);
    case smart_subcommands::WRITE_LOG:                  return executeSmartWriteLog(drive, request);
    case smart_subcommands::DISABLE_OPERATIONS:         return disable(drive, request.now);
    case smart_subcommands::RETURN_STATUS:              return returnStatus(drive);
    default:                                            return aborted();
    }
    // clang-format on
}

}  // namespace orvel::simulator
