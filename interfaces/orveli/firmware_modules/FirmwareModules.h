// The firmware modules of some folders, and which of them is for a drive.
#pragma once

#include "interfaces/orveli/firmware_modules/FirmwareCatalogue.h"
#include "interfaces/orveli/firmware_modules/FirmwareModule.h"

#include <boost/thread/mutex.hpp>

#include <cstdint>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace orvel::interfaces::orveli {

/// The files "*.nfm" of a folder of its own and of others, in this order, those of one folder by
/// name. Of two with one version the first counts. Folders that don't exist are no error. Versions
/// are compared byte by byte. Any thread may ask.
class FirmwareModules : public FirmwareCatalogue {
public:
    explicit FirmwareModules(std::string ownFolder);

    /// Damaged modules and those for single OEMs don't count.
    std::optional<std::string>
    newerVersion(const std::string& product, const std::string& currentFirmware,
                 const std::vector<std::string>& additionalFolders) const override;

    /// What is to be known of a drive.
    struct Drive {
        std::string product;
        std::string firmware;
        std::string oem;
    };

    /// The newest module that is newer than the drive's firmware and made for it, with its image;
    /// nothing if the drive's firmware is current.
    ///
    /// Throws core::Status by value, of category 10: 52 if there is no module at all, 71 if there
    /// is none for the product; if there is something newer that the drive may not take, 72 for
    /// another audience and 70 for firmware that can't be upgraded; 73 with the file's name if the
    /// one to take is damaged; 54 with the name of a file that can't be read, if there was nothing
    /// else to take.
    std::optional<FirmwareModule>
    moduleFor(const Drive& drive, const std::vector<std::string>& additionalFolders) const;

private:
    struct File {
        std::filesystem::path path;
        FirmwareModule module;  ///< without its image
    };

    struct Listing {
        std::vector<File> files;
        std::optional<std::filesystem::path> unreadable;  ///< the first such
    };

    /// What a file said when it looked like this.
    struct Known {
        std::uintmax_t size = 0;
        std::filesystem::file_time_type time;
        FirmwareModule module;
    };

    Listing list(const std::vector<std::string>& additionalFolders) const;
    void listFolder(const std::filesystem::path& folder, Listing& listing) const;
    std::optional<FirmwareModule> look(const std::filesystem::path& path) const;

    /// What the file said before, if it looks the same now.
    std::optional<FirmwareModule> recall(const std::filesystem::path& path, std::uintmax_t size,
                                         std::filesystem::file_time_type time) const;

    std::string ownFolder;
    mutable boost::mutex mutex;
    mutable std::map<std::filesystem::path, Known> known;  ///< guarded by mutex
};

}  // namespace orvel::interfaces::orveli
