// The words for the codes that a drive reports.
#pragma once

#include <cstdint>

namespace orvel::protocols::ata {

/// What a code is of.
enum class StatusType {
    OFFLINE_COLLECTION,  ///< the SMART data's off-line data collection status; bit 7 isn't looked
                         ///< at
    SELF_TEST,           ///< bits 7:4 of a self-test execution status byte
    SCT_EXTENDED,        ///< the SCT status response's extended status code
    SCT_DEVICE_STATE,    ///< the SCT status response's device state
    POWER_MODE,          ///< the count that CHECK POWER MODE returns
    SANITIZE_ERROR       ///< LBA (7:0) of a sanitize command that was aborted
};

/// The standard's words, or "Unknown status code".
const char* statusText(StatusType type, std::uint16_t code);

}  // namespace orvel::protocols::ata
