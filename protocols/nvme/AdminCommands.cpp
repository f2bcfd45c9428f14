#include "protocols/nvme/AdminCommands.h"

#include "core/CoreStatuses.h"

#include <algorithm>
#include <iterator>

namespace orvel::protocols::nvme {

namespace {

constexpr std::uint32_t BYTES_PER_DWORD = 4;
constexpr unsigned UPPER_HALF = 16;
constexpr unsigned UPPER_DWORD = 32;

std::uint32_t checkedLength(std::uint32_t bytes) {
    if (bytes == 0 || bytes % BYTES_PER_DWORD != 0) throw core::statuses::invalidArguments();
    return bytes;
}

/// Number of dwords as commands tell it: 0 stands for one.
std::uint32_t zeroesBasedDwords(std::uint32_t bytes) {
    return checkedLength(bytes) / BYTES_PER_DWORD - 1;
}

std::uint64_t bytesOfZeroesBased(std::uint32_t dwords) {
    return (std::uint64_t{dwords} + 1) * BYTES_PER_DWORD;
}

/// Sets direction and length, if there is any data.
void addOptionalData(AdminCommandFields& fields, DataDirection direction, std::uint32_t bytes) {
    if (bytes == 0) return;
    fields.dataDirection = direction;
    fields.transferLength = bytes;
}

/// Whether there are asynchronous events that the log page tells more of (section 5.2). A host
/// retains none for other pages (5.14).
bool hasEvents(std::uint8_t logPage) {
    constexpr std::uint8_t PAGES[] = {
        log_pages::ERROR_INFORMATION,
        log_pages::SMART_HEALTH_INFORMATION,
        log_pages::FIRMWARE_SLOT_INFORMATION,
        log_pages::CHANGED_NAMESPACE_LIST,
        log_pages::TELEMETRY_CONTROLLER_INITIATED,
        log_pages::PREDICTABLE_LATENCY_EVENT_AGGREGATE,
        log_pages::ASYMMETRIC_NAMESPACE_ACCESS,
        log_pages::LBA_STATUS_INFORMATION,
        log_pages::ENDURANCE_GROUP_EVENT_AGGREGATE,
        log_pages::RESERVATION_NOTIFICATION,
        log_pages::SANITIZE_STATUS,
    };
    return std::ranges::find(PAGES, logPage) != std::end(PAGES);
}

AdminCommand namespaceAttachment(std::uint32_t nsid, std::uint8_t select) {
    return AdminCommand({.opcode = opcodes::NAMESPACE_ATTACHMENT,
                         .nsid = nsid,
                         .cdw10 = placeBits(namespace_attachment_cdw10::SEL, select),
                         .dataDirection = DataDirection::TO_DRIVE,
                         .transferLength = IDENTIFY_SIZE});
}

}  // namespace

AdminCommand identify(std::uint8_t cns, std::uint32_t nsid, std::uint16_t controllerId) {
    return AdminCommand({.opcode = opcodes::IDENTIFY,
                         .nsid = nsid,
                         .cdw10 = placeBits(identify_cdw10::CNS, cns) |
                                  placeBits(identify_cdw10::CNTID, controllerId),
                         .dataDirection = DataDirection::FROM_DRIVE,
                         .transferLength = IDENTIFY_SIZE});
}

AdminCommand getLogPage(const LogPageRequest& request) {
    const std::uint32_t dwords = zeroesBasedDwords(request.bytes);
    const std::uint32_t retain =
        request.retainAsynchronousEvent && hasEvents(request.logPage) ? 1 : 0;
    return AdminCommand({.opcode = opcodes::GET_LOG_PAGE,
                         .nsid = request.nsid,
                         .cdw10 = placeBits(get_log_page_cdw10::LID, request.logPage) |
                                  placeBits(get_log_page_cdw10::LSP, request.logSpecificField) |
                                  placeBits(get_log_page_cdw10::RAE, retain) |
                                  withBits(0, get_log_page_cdw10::NUMDL, dwords),
                         .cdw11 = placeBits(get_log_page_cdw11::NUMDU, dwords >> UPPER_HALF) |
                                  placeBits(get_log_page_cdw11::LSI, request.logSpecificIdentifier),
                         .cdw12 = static_cast<std::uint32_t>(request.offset),
                         .cdw13 = static_cast<std::uint32_t>(request.offset >> UPPER_DWORD),
                         .cdw14 = placeBits(uuid_cdw14::UUID_INDEX, request.uuidIndex),
                         .dataDirection = DataDirection::FROM_DRIVE,
                         .transferLength = request.bytes});
}

AdminCommand getFeatures(const FeatureRequest& request) {
    AdminCommandFields fields{.opcode = opcodes::GET_FEATURES,
                              .nsid = request.nsid,
                              .cdw10 = placeBits(get_features_cdw10::FID, request.feature) |
                                       placeBits(get_features_cdw10::SEL, request.select),
                              .cdw11 = request.cdw11,
                              .cdw14 = placeBits(uuid_cdw14::UUID_INDEX, request.uuidIndex)};
    addOptionalData(fields, DataDirection::FROM_DRIVE, request.bytes);
    return AdminCommand(fields);
}

AdminCommand setFeatures(const FeatureChange& change) {
    const std::uint32_t save = change.save ? 1 : 0;
    AdminCommandFields fields{.opcode = opcodes::SET_FEATURES,
                              .nsid = change.nsid,
                              .cdw10 = placeBits(set_features_cdw10::FID, change.feature) |
                                       placeBits(set_features_cdw10::SV, save),
                              .cdw11 = change.cdw11,
                              .cdw12 = change.cdw12,
                              .cdw13 = change.cdw13,
                              .cdw14 = change.cdw14,
                              .cdw15 = change.cdw15};
    addOptionalData(fields, DataDirection::TO_DRIVE, change.bytes);
    return AdminCommand(fields);
}

AdminCommand formatNvm(const FormatRequest& request) {
    return AdminCommand(
        {.opcode = opcodes::FORMAT_NVM,
         .nsid = request.nsid,
         .cdw10 = placeBits(format_nvm_cdw10::LBAF, request.lbaFormat) |
                  placeBits(format_nvm_cdw10::MSET, request.metadataSettings) |
                  placeBits(format_nvm_cdw10::PI, request.protectionInformation) |
                  placeBits(format_nvm_cdw10::PIL, request.protectionInformationLocation) |
                  placeBits(format_nvm_cdw10::SES, request.secureEraseSettings)});
}

AdminCommand namespaceCreate() {
    return AdminCommand(
        {.opcode = opcodes::NAMESPACE_MANAGEMENT,
         .cdw10 = placeBits(namespace_management_cdw10::SEL, management_select::CREATE),
         .dataDirection = DataDirection::TO_DRIVE,
         .transferLength = IDENTIFY_SIZE});
}

AdminCommand namespaceDelete(std::uint32_t nsid) {
    return AdminCommand(
        {.opcode = opcodes::NAMESPACE_MANAGEMENT,
         .nsid = nsid,
         .cdw10 = placeBits(namespace_management_cdw10::SEL, management_select::DELETE_NAMESPACE)});
}

AdminCommand namespaceAttach(std::uint32_t nsid) {
    return namespaceAttachment(nsid, attachment_select::ATTACH);
}

AdminCommand namespaceDetach(std::uint32_t nsid) {
    return namespaceAttachment(nsid, attachment_select::DETACH);
}

AdminCommand firmwareImageDownload(std::uint32_t offsetDwords, std::uint32_t bytes) {
    return AdminCommand(
        {.opcode = opcodes::FIRMWARE_IMAGE_DOWNLOAD,
         .cdw10 = placeBits(firmware_download_cdw10::NUMD, zeroesBasedDwords(bytes)),
         .cdw11 = placeBits(firmware_download_cdw11::OFST, offsetDwords),
         .dataDirection = DataDirection::TO_DRIVE,
         .transferLength = bytes});
}

AdminCommand firmwareCommit(std::uint8_t slot, std::uint8_t commitAction,
                            std::uint8_t bootPartition) {
    return AdminCommand({.opcode = opcodes::FIRMWARE_COMMIT,
                         .cdw10 = placeBits(firmware_commit_cdw10::FS, slot) |
                                  placeBits(firmware_commit_cdw10::CA, commitAction) |
                                  placeBits(firmware_commit_cdw10::BPID, bootPartition)});
}

AdminCommand deviceSelfTest(std::uint32_t nsid, std::uint8_t selfTestCode) {
    return AdminCommand({.opcode = opcodes::DEVICE_SELF_TEST,
                         .nsid = nsid,
                         .cdw10 = placeBits(device_self_test_cdw10::STC, selfTestCode)});
}

std::uint64_t logPageBytes(const AdminCommandFields& getLogPage) {
    const std::uint32_t upper = readBits(getLogPage.cdw11, get_log_page_cdw11::NUMDU);
    const std::uint32_t lower = readBits(getLogPage.cdw10, get_log_page_cdw10::NUMDL);
    return bytesOfZeroesBased((upper << UPPER_HALF) | lower);
}

std::uint64_t firmwareImageBytes(const AdminCommandFields& firmwareImageDownload) {
    return bytesOfZeroesBased(readBits(firmwareImageDownload.cdw10, firmware_download_cdw10::NUMD));
}

std::uint64_t logPageOffset(const AdminCommandFields& getLogPage) {
    return std::uint64_t{getLogPage.cdw13} << UPPER_DWORD | getLogPage.cdw12;
}

}  // namespace orvel::protocols::nvme
