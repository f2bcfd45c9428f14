// Get Log Page.
#include "protocols/nvme/Features.h"
#include "simulator/NvmeExecutors.h"

#include <algorithm>
#include <optional>

namespace orvel::simulator {

using namespace protocols::nvme;

namespace {

core::Payload errorInformation(const NvmeDrive& drive) {
    const auto count = static_cast<std::uint32_t>(
        protocols::readNumber(drive.identifyController, identify_controller::ELPE) + 1);
    const protocols::Entries entries = errorInformationEntries(count);
    core::Payload page(entries.size * count);
    for (std::uint32_t i = 0; i < std::min<std::size_t>(count, drive.errorLog.size()); ++i) {
        protocols::writeEntry(page, entries, i, drive.errorLog[i]);
    }
    return page;
}

/// The threshold of a sensor, 0 for the composite temperature; nothing if the drive has none.
std::optional<std::uint32_t> temperatureThreshold(const NvmeDrive& drive, std::uint32_t sensor,
                                                  std::uint32_t type) {
    const auto feature = drive.features.find(features::TEMPERATURE_THRESHOLD);
    if (feature == drive.features.end()) return {};
    const std::uint32_t part = sensor << temperature_threshold::TMPSEL.lowBit |
                               type << temperature_threshold::THSEL.lowBit;
    if (!feature->second.defaults.contains(part)) return {};
    return readBits(currentValue(feature->second, part), temperature_threshold::TMPTH);
}

/// At one of its thresholds counts, too (5.21.1.4). 0 K stands for a sensor that there isn't.
bool isTooHotOrCold(const NvmeDrive& drive, std::uint32_t sensor, const protocols::Field& field) {
    constexpr std::uint32_t OVER = 0;
    constexpr std::uint32_t UNDER = 1;
    const auto kelvins = protocols::readNumber(drive.smartHealthLog, field);
    const auto over = temperatureThreshold(drive, sensor, OVER);
    const auto under = temperatureThreshold(drive, sensor, UNDER);
    return kelvins != 0 && ((over && kelvins >= *over) || (under && kelvins <= *under));
}

/// With the warnings that follow from what else the log says (5.14.1.2), besides those that the
/// drive has for reasons of its own.
core::Payload smartHealth(const NvmeDrive& drive) {
    namespace log = smart_health_log;
    // clang-format off
    static constexpr protocols::Field TEMPERATURES[] = {
        log::CompositeTemperature,
        log::TemperatureSensor1, log::TemperatureSensor2, log::TemperatureSensor3,
        log::TemperatureSensor4, log::TemperatureSensor5, log::TemperatureSensor6,
        log::TemperatureSensor7, log::TemperatureSensor8,
    };
    // clang-format on
    const core::Payload page = drive.smartHealthLog.copy();
    if (protocols::readNumber(page, log::AvailableSpare) <
        protocols::readNumber(page, log::AvailableSpareThreshold)) {
        writeBits(page, log::CriticalWarning, critical_warning::SPARE, 1);
    }
    for (std::uint32_t sensor = 0; sensor < std::size(TEMPERATURES); ++sensor) {
        if (isTooHotOrCold(drive, sensor, TEMPERATURES[sensor]))
            writeBits(page, log::CriticalWarning, critical_warning::TEMPERATURE, 1);
    }
    return page;
}

core::Payload firmwareSlots(const NvmeDrive& drive) {
    constexpr protocols::Field REVISION{"", "", 0, 8, protocols::Encoding::TEXT};
    core::Payload page(firmware_slot_log::SIZE);
    writeBits(page, firmware_slot_log::AFI, afi::ACTIVE_SLOT, drive.activeSlot);
    writeBits(page, firmware_slot_log::AFI, afi::NEXT_SLOT, drive.nextSlot);
    for (std::uint32_t i = 0; i < drive.firmwareRevisions.size(); ++i) {
        if (drive.firmwareRevisions[i].empty()) continue;  // stays all zeroes
        protocols::writeText(page, fieldOf(firmware_slot_log::SLOTS, i, REVISION),
                             drive.firmwareRevisions[i]);
    }
    return page;
}

/// Identifiers, or FFFFFFFFh alone if there are more than fit.
core::Payload changedNamespaces(const NvmeDrive& drive) {
    std::vector<std::uint32_t> changed(drive.changedNamespaces.begin(),
                                       drive.changedNamespaces.end());
    if (changed.size() > namespace_list::IDENTIFIERS.count) changed = {ALL_NAMESPACES};
    return makeNamespaceList(changed);
}

core::Payload commandEffects(const NvmeDrive& drive) {
    constexpr std::uint32_t SUPPORTED = effects::CSUPP.mask();
    constexpr std::uint32_t CONTENT = effects::LBCC.mask();
    constexpr std::uint32_t CAPABILITY = effects::NCC.mask();
    constexpr std::uint32_t INVENTORY = effects::NIC.mask();
    constexpr std::uint32_t CONTROLLER = effects::CCC.mask();

    struct Row {
        std::uint8_t opcode;
        const BitField* capability;  ///< null: every drive has the command
        std::uint32_t effects;
    };

    // clang-format off
    static constexpr Row ROWS[] = {
    //  opcode                            capability                    effects
        {opcodes::GET_LOG_PAGE,            nullptr,                     SUPPORTED},
        {opcodes::IDENTIFY,                nullptr,                     SUPPORTED},
        {opcodes::SET_FEATURES,            nullptr,                     SUPPORTED},
        {opcodes::GET_FEATURES,            nullptr,                     SUPPORTED},
        {opcodes::NAMESPACE_MANAGEMENT,    &oacs::NAMESPACE_MANAGEMENT, SUPPORTED | CONTENT | INVENTORY},
        {opcodes::FIRMWARE_COMMIT,         &oacs::FIRMWARE,             SUPPORTED | CONTROLLER},
        {opcodes::FIRMWARE_IMAGE_DOWNLOAD, &oacs::FIRMWARE,             SUPPORTED},
        {opcodes::DEVICE_SELF_TEST,        &oacs::DEVICE_SELF_TEST,     SUPPORTED},
        {opcodes::NAMESPACE_ATTACHMENT,    &oacs::NAMESPACE_MANAGEMENT, SUPPORTED | INVENTORY},
        {opcodes::FORMAT_NVM,              &oacs::FORMAT_NVM,           SUPPORTED | CONTENT | CAPABILITY},
    };
    // clang-format on
    core::Payload page(commands_effects_log::SIZE);
    for (const Row& row : ROWS) {
        if (row.capability && !supports(drive, identify_controller::OACS, *row.capability))
            continue;
        protocols::writeNumber(page,
                               fieldOf(commands_effects_log::ADMIN_COMMANDS, row.opcode,
                                       commands_effects_log::EFFECTS),
                               row.effects);
    }
    return page;
}

core::Payload selfTests(const NvmeDrive& drive, std::chrono::milliseconds now) {
    constexpr std::uint32_t NOT_USED = 0xF;
    core::Payload page(self_test_log::SIZE);
    if (drive.runningSelfTest) {
        writeBits(page, self_test_log::CurrentDeviceSelfTestOperation,
                  current_self_test_operation::OPERATION, drive.runningSelfTest->code);
        writeBits(page, self_test_log::CurrentDeviceSelfTestCompletion,
                  current_self_test_completion::PERCENT, selfTestPercentage(drive, now));
    }
    for (std::uint32_t i = 0; i < self_test_log::RESULTS.count; ++i) {
        if (i < drive.selfTestResults.size()) {
            protocols::writeEntry(page, self_test_log::RESULTS, i, drive.selfTestResults[i]);
        } else {
            writeBits(page,
                      fieldOf(self_test_log::RESULTS, i, self_test_result::DeviceSelfTestStatus),
                      self_test_status::RESULT, NOT_USED);
        }
    }
    return page;
}

/// The whole page; nothing for one that the drive doesn't have.
std::optional<core::Payload> makePage(const NvmeDrive& drive, const NvmeRequest& request) {
    namespace ic = identify_controller;
    switch (readBits(request.fields.cdw10, get_log_page_cdw10::LID)) {
    case log_pages::ERROR_INFORMATION:
        return errorInformation(drive);
    case log_pages::SMART_HEALTH_INFORMATION:
        return smartHealth(drive);
    case log_pages::FIRMWARE_SLOT_INFORMATION:
        return firmwareSlots(drive);
    case log_pages::CHANGED_NAMESPACE_LIST:
        if (!supports(drive, ic::OAES, oaes::NAMESPACE_ATTRIBUTE)) return {};
        return changedNamespaces(drive);
    case log_pages::COMMANDS_SUPPORTED_AND_EFFECTS:
        if (!supports(drive, ic::LPA, lpa::COMMANDS_EFFECTS)) return {};
        return commandEffects(drive);
    case log_pages::DEVICE_SELF_TEST:
        if (!supports(drive, ic::OACS, oacs::DEVICE_SELF_TEST)) return {};
        return selfTests(drive, request.now);
    default:
        return {};
    }
}

NvmeAnswer makeWholePage(const NvmeDrive& drive, const NvmeRequest& request) {
    constexpr std::uint32_t FIRST_VENDOR_PAGE = 0xC0;
    if (readBits(request.fields.cdw10, get_log_page_cdw10::LID) >= FIRST_VENDOR_PAGE) {
        return makeVendorLogPage(drive, request);
    }
    const auto page = makePage(drive, request);
    if (!page) return refusal(status_codes::INVALID_LOG_PAGE);
    NvmeAnswer answer;
    answer.output = *page;
    return answer;
}

/// Only the health of a namespace can be asked for, the other pages are about the whole drive.
StatusCode checkNamespace(const NvmeDrive& drive, const AdminCommandFields& fields) {
    if (fields.nsid == 0 || fields.nsid == ALL_NAMESPACES) return {};
    if (stateOf(drive, fields.nsid) == NamespaceState::INVALID) {
        return status_codes::INVALID_NAMESPACE_OR_FORMAT;
    }
    const bool isHealth =
        readBits(fields.cdw10, get_log_page_cdw10::LID) == log_pages::SMART_HEALTH_INFORMATION;
    if (isHealth && stateOf(drive, fields.nsid) == NamespaceState::ATTACHED &&
        supports(drive, identify_controller::LPA, lpa::SMART_PER_NAMESPACE)) {
        return {};
    }
    return status_codes::INVALID_FIELD_IN_COMMAND;
}

/// What a drive moves at once: a power of two of 4096 bytes.
bool isTooLong(const NvmeDrive& drive, std::uint64_t bytes) {
    constexpr std::uint64_t PAGE = 4096;
    constexpr std::uint64_t LARGEST_EXPONENT = 32;
    const auto exponent =
        protocols::readNumber(drive.identifyController, identify_controller::MDTS);
    return exponent != 0 && exponent < LARGEST_EXPONENT && bytes > PAGE << exponent;
}

StatusCode checkRange(const NvmeDrive& drive, const AdminCommandFields& fields,
                      std::uint32_t pageSize) {
    constexpr std::uint64_t DWORD = 4;
    const std::uint64_t offset = logPageOffset(fields);
    const bool hasOffsets = supports(drive, identify_controller::LPA, lpa::EXTENDED_DATA);
    if (offset != 0 && !hasOffsets) return status_codes::INVALID_FIELD_IN_COMMAND;
    if (offset % DWORD != 0 || offset > pageSize) return status_codes::INVALID_FIELD_IN_COMMAND;
    if (isTooLong(drive, logPageBytes(fields))) return status_codes::INVALID_FIELD_IN_COMMAND;
    if (logPageBytes(fields) > fields.transferLength) return status_codes::DATA_TRANSFER_ERROR;
    return {};
}

}  // namespace

NvmeAnswer executeGetLogPage(NvmeDrive& drive, const NvmeRequest& request) {
    const AdminCommandFields& fields = request.fields;
    const NvmeAnswer whole = makeWholePage(drive, request);
    const core::Payload& page = whole.output;
    for (const StatusCode& status :
         {whole.status, checkNamespace(drive, fields), checkRange(drive, fields, page.size())}) {
        if (status != status_codes::SUCCESSFUL_COMPLETION) return refusal(status);
    }

    // What lies behind the end of the page reads as zeroes.
    NvmeAnswer answer;
    answer.output = core::Payload(static_cast<std::uint32_t>(logPageBytes(fields)));
    const auto offset = static_cast<std::uint32_t>(logPageOffset(fields));
    std::copy_n(page.data() + offset, std::min(page.size() - offset, answer.output.size()),
                answer.output.data());
    if (readBits(fields.cdw10, get_log_page_cdw10::LID) == log_pages::CHANGED_NAMESPACE_LIST &&
        readBits(fields.cdw10, get_log_page_cdw10::RAE) == 0) {
        drive.changedNamespaces.clear();
    }
    return answer;
}

}  // namespace orvel::simulator
