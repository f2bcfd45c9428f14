// What the jobs that set a property have in common: reading the property.
#pragma once

#include "core/StatusWords.h"
#include "interfaces/orveli/jobs/DriveJob.h"

#include <cstdint>
#include <string>

namespace orvel::interfaces::orveli::jobs {

/// Bounds that are part of the range.
struct Range {
    std::uint32_t lowest;
    std::uint32_t highest;
};

class SettingJob : public DriveJob {
protected:
    /// `title` matters to a job that reports, too.
    SettingJob(const std::string& name, Kind kind, const std::string& title = "");

    /// The value without the blanks around it, as the request spells it. The attribute gives it
    /// only if no request does: there it has been fitted to a type, which makes 1 of 65537, 0 of
    /// "-5" and false of "yes".
    std::string textOf(const core::Attribute& property) const;

    /// Decimal, or hexadecimal behind "0x". Throws `refusal` for anything else and for a number
    /// out of the range.
    std::uint32_t numberOf(const core::Attribute& property, const Range& range,
                           const core::Status& refusal) const;

    /// As `readBoolean`.
    bool booleanOf(const core::Attribute& property) const;
};

/// Whether it is the catalogue's property, whatever its type.
bool isNamed(const core::Attribute& property, const core::Attribute& descriptor);

/// Throws 10/36 if it is another.
void requireName(const core::Attribute& property, const core::Attribute& descriptor);

/// "true" or "1", "false" or "0". Throws 10/36 with the property's name for anything else.
bool readBoolean(const core::Attribute& descriptor, const std::string& text);

/// Success for what a drive takes over when its power comes back.
core::Status successAfterPowerCycle();

}  // namespace orvel::interfaces::orveli::jobs
