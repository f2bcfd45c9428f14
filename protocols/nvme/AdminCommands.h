// Admin commands, ready to be sent: right dwords, direction and transfer length.
//
// What a dword can't hold is an error of the caller: each factory throws core::Status by value,
// code 36, for a number that is too large for its bits, and for a length of data that is 0 or no
// multiple of 4. What a drive may refuse is left to the drive.
#pragma once

#include "protocols/nvme/AdminCommand.h"
#include "protocols/nvme/BitField.h"

#include <cstdint>

namespace orvel::protocols::nvme {

// The values that commands carry, in namespaces `cns`, `log_pages`, `features` and so on.
#define VALUE(group, value, name, words)                                                           \
    namespace group {                                                                              \
    inline constexpr std::uint8_t name = value;                                                    \
    }
#include "protocols/nvme/CommandValues.def"

// The bits of command dwords: namespaces `identify_cdw10` and so on. Also for whoever executes
// commands.
#define BIT_TABLE "protocols/nvme/CommandBits.def"
#include "protocols/nvme/BitTable.def"

/// The namespace identifier that stands for all namespaces, or for the whole controller.
inline constexpr std::uint32_t ALL_NAMESPACES = 0xFFFFFFFF;

/// Of every structure that Identify returns, and of those that namespace commands send.
inline constexpr std::uint32_t IDENTIFY_SIZE = 4096;

/// Identify (section 5.15).
AdminCommand identify(std::uint8_t cns, std::uint32_t nsid = 0, std::uint16_t controllerId = 0);

/// Parts of Get Log Page. The defaults are what a drive of an older version expects too.
struct LogPageRequest {
    std::uint8_t logPage = 0;
    std::uint32_t nsid = ALL_NAMESPACES;
    std::uint32_t bytes = 0;
    std::uint64_t offset = 0;  ///< in bytes; a drive takes multiples of 4
    std::uint8_t logSpecificField = 0;
    /// Else reading clears the event that the log page tells more of, and others wait for it in
    /// vain. Counts nothing for pages that the standard has no event for, the vendors' included.
    bool retainAsynchronousEvent = true;
    std::uint16_t logSpecificIdentifier = 0;
    std::uint8_t uuidIndex = 0;
};

/// Get Log Page (section 5.14).
AdminCommand getLogPage(const LogPageRequest& request);

/// Parts of Get Features.
struct FeatureRequest {
    std::uint8_t feature = 0;
    std::uint8_t select = feature_select::CURRENT;
    std::uint32_t cdw11 = 0;
    std::uint32_t nsid = 0;
    std::uint32_t bytes = 0;  ///< of the feature's data; 0 for features that are just a dword
    std::uint8_t uuidIndex = 0;
};

/// Get Features (section 5.13). A dword comes back in the completion.
AdminCommand getFeatures(const FeatureRequest& request);

/// Parts of Set Features.
struct FeatureChange {
    std::uint8_t feature = 0;
    std::uint32_t cdw11 = 0;
    bool save = false;  ///< so that it outlasts power cycles and resets
    std::uint32_t nsid = 0;
    std::uint32_t cdw12 = 0;
    std::uint32_t cdw13 = 0;
    std::uint32_t cdw14 = 0;  ///< with the UUID index in its low bits
    std::uint32_t cdw15 = 0;
    std::uint32_t bytes = 0;  ///< of the feature's data; 0 for features that are just dwords
};

/// Set Features (section 5.21).
AdminCommand setFeatures(const FeatureChange& change);

/// Parts of Format NVM.
struct FormatRequest {
    std::uint32_t nsid = ALL_NAMESPACES;
    std::uint8_t lbaFormat = 0;              ///< 0 to 15
    std::uint8_t metadataSettings = 0;       ///< 1: metadata is part of an extended data LBA
    std::uint8_t protectionInformation = 0;  ///< 0 none, 1 to 3 the type
    std::uint8_t protectionInformationLocation = 0;  ///< 1: first eight bytes of the metadata
    std::uint8_t secureEraseSettings = secure_erase::NONE;
};

/// Format NVM (section 5.23).
AdminCommand formatNvm(const FormatRequest& request);

/// Namespace Management (section 5.20). `makeNewNamespace` makes the data; the completion's
/// dword 0 tells the new namespace's identifier.
AdminCommand namespaceCreate();
AdminCommand namespaceDelete(std::uint32_t nsid);

/// Namespace Attachment (section 5.19). `makeControllerList` makes the data.
AdminCommand namespaceAttach(std::uint32_t nsid);
AdminCommand namespaceDetach(std::uint32_t nsid);

/// Firmware Image Download (section 5.12): `bytes` of the image, to `offsetDwords` in it.
AdminCommand firmwareImageDownload(std::uint32_t offsetDwords, std::uint32_t bytes);

/// Firmware Commit (section 5.11). Slot 0 lets the drive choose.
AdminCommand firmwareCommit(std::uint8_t slot, std::uint8_t commitAction,
                            std::uint8_t bootPartition = 0);

/// Device Self-test (section 5.8). Namespace 0 tests the controller alone.
AdminCommand deviceSelfTest(std::uint32_t nsid, std::uint8_t selfTestCode);

/// How many bytes of data a command with a zeroes-based number of dwords moves, for whoever
/// executes commands.
std::uint64_t logPageBytes(const AdminCommandFields& getLogPage);
std::uint64_t firmwareImageBytes(const AdminCommandFields& firmwareImageDownload);

/// The offset that a Get Log Page asks for, in bytes.
std::uint64_t logPageOffset(const AdminCommandFields& getLogPage);

}  // namespace orvel::protocols::nvme
