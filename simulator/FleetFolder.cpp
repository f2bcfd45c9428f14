#include "simulator/FleetFolder.h"

#include "core/Files.h"
#include "features/FeatureStatuses.h"
#include "simulator/AtaController.h"
#include "simulator/DefaultFleet.h"
#include "simulator/FleetText.h"
#include "simulator/JsonText.h"
#include "simulator/NvmeController.h"
#include "simulator/RecordText.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <system_error>
#include <utility>

namespace orvel::simulator {

namespace files = core::files;
using std::chrono::milliseconds;

namespace {

constexpr const char* DESCRIPTION = "fleet.json";
constexpr const char* STATE = "state.json";
constexpr const char* LOCK = "lock";
constexpr const char* POWER_CYCLE = "power-cycle";

constexpr std::size_t MAX_FILE_SIZE = LONGEST_JSON;

/// The row with the file, and what is wrong with it, behind its text. Quotation marks become single
/// ones: a tool may quote the message without escaping it.
core::Status about(core::Status row, const std::string& file, const std::string& problem) {
    std::string words = file + ": " + problem;
    std::replace(words.begin(), words.end(), '"', '\'');
    row.setMessage(row.getMessage() + " " + words);
    return row;
}

core::Status readFailure(const std::string& file, const std::string& problem) {
    return about(features::statuses::fileReadFailed(), file, problem);
}

core::Status writeFailure(const std::string& file, const std::string& problem) {
    return about(features::statuses::fileWriteFailed(), file, problem);
}

/// Also true for what can't be told: reading it will say why.
bool exists(const std::string& file) {
    std::error_code ignored;
    return std::filesystem::status(file, ignored).type() != std::filesystem::file_type::not_found;
}

Fleet readFile(const std::string& file, Unmentioned unmentioned) {
    const auto text = files::read(file, MAX_FILE_SIZE);
    if (!text) {
        throw readFailure(file, "It can't be read, is no plain file, or has more than " +
                                    std::to_string(MAX_FILE_SIZE) + " bytes.");
    }
    try {
        return readFleet(*text, unmentioned);
    } catch (const FleetTextError& error) {
        throw readFailure(file, error.what());
    }
}

/// Whether a file of the folder can be replaced.
bool takesNewFiles(const std::string& file) {
    const std::string folder = std::filesystem::path(file).parent_path().string();
    return ::faccessat(AT_FDCWD, folder.c_str(), W_OK | X_OK, AT_EACCESS) == 0;
}

milliseconds timeOfDay() {
    return std::chrono::duration_cast<milliseconds>(
        std::chrono::system_clock::now().time_since_epoch());
}

/// As far as times can be written down.
constexpr milliseconds LAST_TIME{forms::Time::MOST};

/// Neither is negative. As far as times go.
milliseconds addAccelerated(milliseconds start, milliseconds passed, std::uint32_t factor) {
    const milliseconds left = std::max(milliseconds{0}, LAST_TIME - start);
    if (factor == 0) return start;
    return passed > left / factor ? std::max(start, LAST_TIME) : start + passed * factor;
}

}  // namespace

FleetFolder::FleetFolder(std::string path, Clock realTime)
    : path(std::move(path)),
      realTime(realTime ? std::move(realTime) : timeOfDay) {}

Fleet& FleetFolder::open() {
    if (fleet) return *fleet;
    try {
        takeLock();
        load();
    } catch (...) {
        abandon();
        throw;
    }
    return *fleet;
}

milliseconds FleetFolder::now() {
    const milliseconds real = std::clamp(realTime(), milliseconds{0}, LAST_TIME);
    if (real < latestRealTime) {
        wasClockSetBack = true;
    } else {
        latestTime = addAccelerated(latestTime, real - latestRealTime, fleet->timeFactor);
    }
    latestRealTime = real;
    return latestTime;
}

void FleetFolder::commit() {
    if (!fleet) return;
    try {
        if (fleet != kept) {
            write();
        } else if (wasClockSetBack) {
            writeTimes();
        }
    } catch (...) {
        abandon();
        throw;
    }
    abandon();
}

void FleetFolder::abandon() {
    fleet.reset();
    kept.reset();
    lock = FileLock();
}

std::string FleetFolder::file(const char* name) const {
    return (std::filesystem::path(path) / name).string();
}

void FleetFolder::takeLock() {
    std::error_code error;
    std::filesystem::create_directories(path, error);
    if (error) throw about(features::statuses::directoryCreationFailed(), path, error.message());

    // Those who can only read stand in nobody's way but that of who writes.
    const auto holders = takesNewFiles(files::resolve(file(STATE))) ? FileLock::Holders::ONE
                                                                    : FileLock::Holders::SEVERAL;
    lock = FileLock(file(LOCK), FileLock::Missing::MAKE, holders);
    isLockedForChange = lock.isHeld() && holders == FileLock::Holders::ONE;
    if (lock.isHeld()) return;
    lock = FileLock(file(STATE), FileLock::Missing::LEAVE, FileLock::Holders::SEVERAL);
    if (!lock.isHeld()) throw writeFailure(file(LOCK), "It can't be made, or not be locked.");
}

void FleetFolder::load() {
    if (exists(file(STATE))) {
        fleet = kept = readFile(file(STATE), Unmentioned::BLANK);
    } else if (exists(file(DESCRIPTION))) {
        fleet = readFile(file(DESCRIPTION), Unmentioned::TYPICAL);
    } else {
        fleet = readFleet(defaultFleet(), Unmentioned::TYPICAL);
    }
    // Time begins to pass for drives that are new, wherever their description is from.
    if (!kept) fleet->realTime = std::clamp(realTime(), milliseconds{0}, LAST_TIME);
    latestTime = fleet->latestTime;
    latestRealTime = fleet->realTime;
    wasClockSetBack = false;

    const bool losesPower = exists(file(POWER_CYCLE));
    if (losesPower) powerCycle();
    if (losesPower || !kept) write();
    // Only now: a crash before this is followed by one power cycle more, but never by none.
    std::error_code error;
    if (losesPower && !std::filesystem::remove(file(POWER_CYCLE), error) && error)
        throw writeFailure(file(POWER_CYCLE), error.message());
}

void FleetFolder::write() {
    // A link stays, and what it leads to is replaced.
    const std::string target = files::resolve(file(STATE));
    if (!isLockedForChange || !takesNewFiles(target))
        throw writeFailure(file(STATE), "Its folder takes no new files.");
    fleet->latestTime = latestTime;
    fleet->realTime = latestRealTime;
    const std::string text = writeFleet(*fleet);
    if (text.size() > MAX_FILE_SIZE) {
        throw writeFailure(file(STATE),
                           "It would have more than " + std::to_string(MAX_FILE_SIZE) + " bytes.");
    }
    if (!files::replaceByRename(target, text))
        throw writeFailure(file(STATE), "It can't be written.");
    kept = fleet;
}

/// Time would stand still until the real clock comes to where it was. Whoever can't write that down
/// has lost nothing else.
void FleetFolder::writeTimes() {
    try {
        write();
    } catch (const core::Status&) {
        return;
    }
}

void FleetFolder::powerCycle() {
    const Clock clock = [this] { return now(); };
    for (SimulatedDrive& one : fleet->drives) {
        one.isLost = false;
        if (auto* nvme = std::get_if<NvmeDrive>(&one.drive))
            NvmeController(*nvme, clock).powerCycle();
        if (auto* ata = std::get_if<AtaDrive>(&one.drive)) AtaController(*ata, clock).powerCycle();
    }
}

}  // namespace orvel::simulator
