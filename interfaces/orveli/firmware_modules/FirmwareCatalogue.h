// What firmware there is for drives, as jobs ask for it.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace orvel::interfaces::orveli {

/// Knows the newest firmware of each family of drives. Asked once for each drive that is shown, so
/// that an implementation keeps what it has read.
class FirmwareCatalogue {
public:
    virtual ~FirmwareCatalogue() = default;

    FirmwareCatalogue& operator=(const FirmwareCatalogue&) = delete;

    /// The newest firmware for the drives of `product`, a family's code name, if it is newer than
    /// `currentFirmware`; nothing if there is none. Looks into `additionalFolders` too. Folders and
    /// files that can't be read count as absent: it throws nothing.
    virtual std::optional<std::string>
    newerVersion(const std::string& product, const std::string& currentFirmware,
                 const std::vector<std::string>& additionalFolders) const = 0;

protected:
    FirmwareCatalogue() = default;
    FirmwareCatalogue(const FirmwareCatalogue&) = default;
};

}  // namespace orvel::interfaces::orveli
