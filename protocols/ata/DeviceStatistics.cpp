#include "protocols/ata/DeviceStatistics.h"

namespace orvel::protocols::ata {

namespace {

Field flagsOf(const Field& field) {
    return {"Flags", "DEVICE STATISTICS FLAGS", field.offset + STATISTIC_FLAGS_OFFSET, 1,
            Encoding::NUMBER};
}

}  // namespace

bool Statistic::isValid() const {
    constexpr std::uint8_t BOTH = statistic_flags::SUPPORTED | statistic_flags::VALID;
    return (flags & BOTH) == BOTH;
}

Statistic readStatistic(const core::Payload& page, const Field& field) {
    return {readNumber(page, field), static_cast<std::uint8_t>(readNumber(page, flagsOf(field)))};
}

void writeStatistic(const core::Payload& page, const Field& field, const Statistic& statistic) {
    writeNumber(page, flagsOf(field), statistic.flags);
    writeNumber(page, field, statistic.value);
}

}  // namespace orvel::protocols::ata
