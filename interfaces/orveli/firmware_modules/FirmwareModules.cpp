#include "interfaces/orveli/firmware_modules/FirmwareModules.h"

#include "core/Files.h"
#include "core/StatusWords.h"
#include "core/Strings.h"
#include "features/FeatureStatuses.h"
#include "features/ProductIdentifiers.h"

#include <boost/thread/lock_guard.hpp>

#include <algorithm>
#include <system_error>
#include <utility>

namespace orvel::interfaces::orveli {

namespace fs = std::filesystem;
using core::Status;

namespace {

constexpr const char* EXTENSION = ".nfm";

constexpr std::size_t MAX_FILE = FirmwareModule::MAX_HEADER + FirmwareModule::MAX_IMAGE;

bool isForAnybody(const FirmwareModule& module) {
    return module.audience == features::product_identifiers::norvo_ssd::oems::Generic;
}

/// Whether it says what firmware the family's drives may have.
bool isComparable(const FirmwareModule& module, const std::string& product) {
    return module.damage.empty() && module.product == product && isForAnybody(module);
}

bool isForOem(const FirmwareModule& module, const std::string& oem) {
    return isForAnybody(module) || core::strings::equals(module.audience, oem, true);
}

/// A damaged module may lack the version.
bool isNewer(const FirmwareModule& module, const std::string& firmware) {
    return module.version.empty() || module.version > firmware;
}

std::optional<FirmwareModule> read(const fs::path& path) {
    const auto bytes = core::files::read(path.string(), MAX_FILE);
    if (!bytes) return std::nullopt;
    return FirmwareModule::parse(*bytes);
}

Status damaged(const fs::path& path, const std::string& damage) {
    return core::withWords(features::statuses::invalidFirmwareModuleType(),
                           path.string() + ": " + damage);
}

Status unreadable(const fs::path& path) {
    return core::withWords(features::statuses::fileReadFailed(), path.string());
}

/// Why the drive may not take it. A damaged module may lack its audience, and nobody knows for whom
/// it was.
std::optional<Status> objection(const FirmwareModule& module, const FirmwareModules::Drive& drive) {
    if (!module.audience.empty() && !isForOem(module, drive.oem))
        return features::statuses::invalidTargetAudience();
    if (!module.canUpgrade(drive.firmware))
        return features::statuses::contactRepresentativeAboutFirmware();
    return std::nullopt;
}

}  // namespace

FirmwareModules::FirmwareModules(std::string ownFolder) : ownFolder(std::move(ownFolder)) {}

std::optional<std::string>
FirmwareModules::newerVersion(const std::string& product, const std::string& currentFirmware,
                              const std::vector<std::string>& additionalFolders) const {
    std::optional<std::string> newest;
    for (const File& file : list(additionalFolders).files) {
        const FirmwareModule& module = file.module;
        const bool counts = isComparable(module, product) && module.canUpgrade(currentFirmware) &&
                            module.version > newest.value_or(currentFirmware);
        if (counts) newest = module.version;
    }
    return newest;
}

std::optional<FirmwareModule>
FirmwareModules::moduleFor(const Drive& drive,
                           const std::vector<std::string>& additionalFolders) const {
    Listing listing = list(additionalFolders);
    auto& files = listing.files;
    const bool areThereAny = !files.empty();
    std::erase_if(files, [&](const File& file) { return file.module.product != drive.product; });
    const bool areThereForProduct = !files.empty();
    std::erase_if(files, [&](const File& file) { return !isNewer(file.module, drive.firmware); });
    std::ranges::stable_sort(files, std::ranges::greater(),
                             [](const File& file) { return file.module.version; });

    std::optional<Status> reason;
    for (const File& file : files) {
        const auto against = objection(file.module, drive);
        if (against) {
            if (!reason) reason = against;
            continue;
        }
        // Read again, for the image; somebody may have exchanged the file in between.
        auto module = read(file.path);
        if (!module) throw unreadable(file.path);
        if (!module->damage.empty()) throw damaged(file.path, module->damage);
        if (module->product != drive.product || module->version != file.module.version)
            throw damaged(file.path, "It has just been changed.");
        return module;
    }
    if (reason) throw *reason;
    if (listing.unreadable) throw unreadable(*listing.unreadable);
    if (!areThereAny) throw features::statuses::noFirmwareFileOrModule();
    if (!areThereForProduct) throw features::statuses::noFirmwareModule();
    return std::nullopt;
}

FirmwareModules::Listing
FirmwareModules::list(const std::vector<std::string>& additionalFolders) const {
    Listing listing;
    listFolder(ownFolder, listing);
    for (const std::string& folder : additionalFolders)
        listFolder(folder, listing);
    return listing;
}

void FirmwareModules::listFolder(const fs::path& folder, Listing& listing) const {
    if (folder.empty()) return;
    std::error_code error;
    std::vector<fs::path> paths;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error)) {
        std::error_code ignored;
        if (entry->path().extension() == EXTENSION && !entry->is_directory(ignored))
            paths.push_back(entry->path());
    }
    std::ranges::sort(paths);
    for (const fs::path& path : paths) {
        auto module = look(path);
        if (module) {
            listing.files.push_back({path, std::move(*module)});
        } else if (!listing.unreadable) {
            listing.unreadable = path;
        }
    }
}

std::optional<FirmwareModule> FirmwareModules::look(const fs::path& path) const {
    std::error_code error;
    if (!fs::is_regular_file(path, error)) return std::nullopt;
    const std::uintmax_t size = fs::file_size(path, error);
    if (error) return std::nullopt;
    const auto time = fs::last_write_time(path, error);
    if (error) return std::nullopt;
    if (size > MAX_FILE) return FirmwareModule::parse({});
    if (auto module = recall(path, size, time)) return module;
    auto module = read(path);
    if (!module) return std::nullopt;
    module->image = {};
    const boost::lock_guard<boost::mutex> lock(mutex);
    known[path] = {size, time, *module};
    return module;
}

std::optional<FirmwareModule> FirmwareModules::recall(const fs::path& path, std::uintmax_t size,
                                                      fs::file_time_type time) const {
    const boost::lock_guard<boost::mutex> lock(mutex);
    const auto found = known.find(path);
    const bool isSame =
        found != known.end() && found->second.size == size && found->second.time == time;
    return isSame ? std::optional(found->second.module) : std::nullopt;
}

}  // namespace orvel::interfaces::orveli
