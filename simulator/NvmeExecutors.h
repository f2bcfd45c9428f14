// What a simulated NVMe drive does for each command. Numbers of sections are those of NVM Express
// Base Specification 1.4.
#pragma once

#include "protocols/nvme/AdminCommand.h"
#include "protocols/nvme/StatusCodes.h"
#include "simulator/FirmwareImage.h"
#include "simulator/NvmeDrive.h"

#include <chrono>
#include <cstdint>
#include <optional>

namespace orvel::simulator {

/// A command's outcome, as far as its executor knows it.
struct NvmeAnswer {
    protocols::nvme::StatusCode status;
    std::uint32_t dword0 = 0;
    core::Payload output;
    std::uint64_t errorInformation = 0;  ///< the command's own word in the error log
};

inline NvmeAnswer refusal(const protocols::nvme::StatusCode& status) {
    NvmeAnswer answer;
    answer.status = status;
    return answer;
}

/// A command on its way through an executor.
struct NvmeRequest {
    const protocols::nvme::AdminCommandFields& fields;
    const core::Payload& input;
    std::chrono::milliseconds now;
};

using NvmeExecutor = NvmeAnswer(NvmeDrive& drive, const NvmeRequest& request);

NvmeExecutor executeIdentify;             // 5.15
NvmeExecutor executeGetLogPage;           // 5.14
NvmeExecutor executeGetFeatures;          // 5.13
NvmeExecutor executeSetFeatures;          // 5.21
NvmeExecutor executeFormatNvm;            // 5.23
NvmeExecutor executeNamespaceManagement;  // 5.20
NvmeExecutor executeNamespaceAttachment;  // 5.19
NvmeExecutor executeFirmwareDownload;     // 5.12
NvmeExecutor executeFirmwareCommit;       // 5.11
NvmeExecutor executeDeviceSelfTest;       // 5.8

/// What a part of a feature is now. The part must be one that the feature has.
std::uint32_t currentValue(const NvmeFeature& feature, std::uint32_t part);

// What Norvo drives have beyond the standard: log pages and features from the vendor's ranges.

/// The whole page; its status is Invalid Log Page for one that the drive doesn't have, or doesn't
/// have now, and Invalid Field in Command for a part that doesn't exist.
NvmeAnswer makeVendorLogPage(const NvmeDrive& drive, const NvmeRequest& request);

/// What a vendor feature's dword is, if it doesn't come from what has been set.
std::optional<std::uint32_t> vendorFeatureValue(const NvmeDrive& drive, std::uint8_t feature,
                                                std::uint32_t select);

/// Whether a value makes sense for the drive. True for features that aren't the vendor's.
protocols::nvme::StatusCode checkVendorFeature(const NvmeDrive& drive, std::uint8_t feature,
                                               const protocols::nvme::AdminCommandFields& fields);

/// Whether the drive collects latency statistics now.
bool isLatencyTracked(const NvmeDrive& drive);

/// What becomes of the value of a feature that is being set.
enum class FeatureStorage {
    AS_ASKED,  ///< saved if the command asks for it
    SAVED,     ///< saved in any case
    NONE       ///< it was an order, and has been carried out
};

/// Does what setting a vendor feature does at once, before the value is stored.
FeatureStorage applyVendorFeature(NvmeDrive& drive, std::uint8_t feature,
                                  const protocols::nvme::AdminCommandFields& fields);

/// How a namespace is to be laid out.
struct NamespaceFormat {
    std::uint32_t lbaFormat = 0;
    bool isExtended = false;  ///< metadata at the end of each data block
    std::uint32_t protectionType = 0;
    bool isProtectionFirst = false;
};

/// Whether namespaces of these capabilities can have it.
bool isFormatAvailable(const core::Payload& identifyNamespace, const NamespaceFormat& format);

/// How a self-test ended (5.14.1.6).
namespace self_test_results {
inline constexpr std::uint8_t WITHOUT_ERROR = 0x0;
inline constexpr std::uint8_t ABORTED_BY_COMMAND = 0x1;
inline constexpr std::uint8_t ABORTED_BY_RESET = 0x2;
inline constexpr std::uint8_t ABORTED_BY_NAMESPACE_REMOVAL = 0x3;
inline constexpr std::uint8_t ABORTED_BY_FORMAT = 0x4;
inline constexpr std::uint8_t FAILED_SEGMENT = 0x7;
}  // namespace self_test_results

/// Writes the result down if a self-test has come to its end.
void finishSelfTest(NvmeDrive& drive, std::chrono::milliseconds now);

/// Ends a running self-test with this result; nothing if none is running.
void endSelfTest(NvmeDrive& drive, std::uint8_t result);

/// How much of a running self-test is done, 0 to 99.
std::uint8_t selfTestPercentage(const NvmeDrive& drive, std::chrono::milliseconds now);

/// Starts the firmware of a slot.
void activateFirmware(NvmeDrive& drive, std::uint8_t slot);

}  // namespace orvel::simulator
