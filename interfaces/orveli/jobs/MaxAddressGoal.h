// What a user wants the highest LBA of a drive to be.
#pragma once

#include <cstdint>
#include <string>

namespace orvel::interfaces::orveli::jobs {

/// A plain value: "native", gigabytes ("480GB"), a percentage ("80%", 1 to 100) or an LBA, in any
/// case.
class MaxAddressGoal {
public:
    /// Throws core::Status by value: 10/43 for a text that is none of these; 10/42 for a number
    /// that no drive takes: zero, negative, over 100 %, or above 64 bits.
    explicit MaxAddressGoal(const std::string& text);

    /// The highest LBA, at most `native`. Throws 10/42 for more than the drive has, or less than
    /// one sector of it; 10/210 for gigabytes in sectors of neither 512 nor 4096 bytes.
    ///
    /// A percentage is one of the native number of sectors. Gigabytes have 10^9 bytes and are
    /// counted as drives are sold: the number of sectors is that of IDEMA LBA1-03, which is a
    /// little more than the bytes need. Where that little alone goes beyond the native size, it is
    /// cut off: a drive of n gigabytes takes n.
    std::uint64_t toLba(std::uint64_t native, std::uint64_t sectorBytes) const;

private:
    enum class Unit { NATIVE, GIGABYTES, PERCENT, LBA };

    Unit unit = Unit::NATIVE;
    std::uint64_t number = 0;
};

}  // namespace orvel::interfaces::orveli::jobs
