// What a drive answers to each command.
#pragma once

#include "core/Payload.h"
#include "core/ProtocolResult.h"
#include "protocols/Field.h"
#include "protocols/nvme/BitField.h"
#include "protocols/nvme/StatusCodes.h"

#include <cstdint>
#include <memory>
#include <string>

namespace orvel::protocols::nvme {

namespace completion_entry {
inline constexpr std::uint32_t SIZE = 16;
#define FIELD_TABLE "protocols/nvme/CompletionEntry.def"
#include "protocols/FieldTable.def"
}  // namespace completion_entry

#define BIT_TABLE "protocols/nvme/CompletionEntryBits.def"
#include "protocols/nvme/BitTable.def"

/// Completion queue entry (NVM Express Base Specification 1.4, section 4.6), a plain record.
class CompletionEntry : public core::ProtocolResult {
public:
    /// All zeroes: success.
    CompletionEntry() = default;

    /// From the entry's bytes. Throws core::Status by value, code 34, for fewer than 16.
    explicit CompletionEntry(const core::Payload& bytes);

    /// The entry's 16 bytes. What is too large for its bits loses the upper ones.
    core::Payload toBytes() const;

    bool isSuccess() const { return status == status_codes::SUCCESSFUL_COMPLETION; }

    std::unique_ptr<core::ProtocolResult> clone() const override;
    std::string toString() const override;
    std::unique_ptr<core::xml::XmlElement> toXml() const override;

    std::uint32_t dword0 = 0;  ///< the command's own result
    std::uint32_t dword1 = 0;  ///< reserved; kept as it came
    std::uint16_t submissionQueueHead = 0;
    std::uint16_t submissionQueueId = 0;  ///< 0 for admin commands
    std::uint16_t commandId = 0;
    bool phase = false;
    StatusCode status;
    std::uint8_t retryDelay = 0;  ///< which of the controller's CRDT1 to CRDT3 to wait; 0 for none
    bool more = false;            ///< the Error Information log page tells more
    bool doNotRetry = false;
};

}  // namespace orvel::protocols::nvme
