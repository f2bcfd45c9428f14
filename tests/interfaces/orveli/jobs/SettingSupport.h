// Sets properties by whole requests, and tells in short what came of it.
#pragma once

#include "core/Strings.h"
#include "tests/interfaces/orveli/access/ScriptedDrive.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace orvel::interfaces::orveli::jobs {

inline constexpr const char* DONE = "0/0 Completed successfully.";
inline constexpr const char* DONE_AFTER_POWER_CYCLE =
    "0/0 Completed successfully. Power cycle the drive to apply the change.";
inline constexpr const char* NOT_SUPPORTED_BY_DRIVE =
    "10/3 The selected drive does not support this feature.";
inline constexpr const char* NOT_A_NORVO_SSD = "10/1 Drive is not an Norvo SSD.";
inline constexpr const char* INVALID_PROPERTY = "10/36 Invalid property specified.";
inline constexpr const char* INVALID_SCT_FEATURE = "10/56 Invalid SCT Feature Control command.";
inline constexpr const char* VALUE_NOT_TAKEN =
    "10/164 Configuration update failed. The drive kept another value.";

/// "category/code message".
inline std::string textOf(const core::Status& status) {
    return std::to_string(status.getCategory()) + "/" + std::to_string(status.getCode()) + " " +
           status.getMessage();
}

struct PropertyText {
    std::string name;
    std::string type;
    std::string value;
};

/// What comes of a "SetProperty" request with this property.
template <class JobType>
std::string set(const ScriptedDrive& drive, const PropertyText& property) {
    JobType original;
    const auto job = original.clone();
    const std::string request = "<Object name=\"" + job->getName() +
                                "\" type=\"SetProperty\"><Object name=\"Properties\"><Property "
                                "name=\"" +
                                property.name + "\" type=\"" + property.type + "\" value=\"" +
                                property.value + "\"/></Object></Object>";
    return textOf(runJob(*job, request, {drive.getDevice()}).status);
}

/// The bytes that data starts with, as digits; the rest must be zero.
inline std::string startOf(const core::Payload& data, std::uint32_t bytes) {
    if (data.size() < bytes) return "too short: " + std::to_string(data.size());
    const bool isRestZero = std::all_of(data.data() + bytes, data.data() + data.size(),
                                        [](std::uint8_t byte) { return byte == 0; });
    EXPECT_TRUE(isRestZero);
    return core::strings::bytesToHex(data.data(), bytes);
}

}  // namespace orvel::interfaces::orveli::jobs
