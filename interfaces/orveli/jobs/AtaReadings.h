// SMART attributes and device statistics of one SATA drive, read when they are first asked for.
#pragma once

#include "core/Device.h"
#include "core/Payload.h"
#include "core/Status.h"
#include "core/xml/XmlObject.h"
#include "interfaces/orveli/jobs/SmartAttributes.h"
#include "protocols/Field.h"

#include <cstdint>
#include <map>
#include <optional>
#include <vector>

namespace orvel::interfaces::orveli::jobs {

/// For jobs that show values out of several places, of which a user may want only some. Lives as
/// long as one drive's report, and borrows the drive. What the drive refuses counts as absent; each
/// operation throws core::Status by value if it can't be reached.
class AtaReadings {
public:
    explicit AtaReadings(core::Device& device) : device(device) {}

    /// Null if the drive has no such attribute.
    const SmartAttribute* find(std::uint8_t id);

    /// Empty if the drive refuses or SMART is disabled.
    const std::vector<SmartAttribute>& smartAttributes();

    /// The value of a row of a page of the Device Statistics log; nothing if it isn't valid.
    std::optional<std::uint64_t> findStatistic(std::uint8_t page, const protocols::Field& row);

    /// For the end of a report: throws the first refusal if there was one and `drive` shows
    /// nothing.
    void explainNothing(const core::xml::XmlObject& drive) const;

private:
    /// Keeps a refusal, and throws everything else on.
    void note(const core::Status& status);

    core::Device& device;
    std::optional<std::vector<SmartAttribute>> attributes;
    std::map<std::uint8_t, core::Payload> pages;  ///< by number; empty for a refused one
    core::Status refusal;
};

}  // namespace orvel::interfaces::orveli::jobs
