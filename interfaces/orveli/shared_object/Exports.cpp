#include "interfaces/orveli/shared_object/Exports.h"

#include "core/GlobalLogging.h"
#include "features/JobInterfaceStatuses.h"
#include "interfaces/orveli/shared_object/Places.h"
#include "interfaces/orveli/shared_object/SimulatedLibrary.h"

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <fstream>
#include <memory>
#include <mutex>
#include <string>
#include <system_error>

namespace {

using orvel::interfaces::orveli::shared_object::SimulatedLibrary;
namespace global_logging = orvel::core::global_logging;
namespace places = orvel::interfaces::orveli::shared_object::places;
namespace statuses = orvel::interfaces::orveli::statuses;

constexpr std::uint64_t INTERFACE_VERSION = 20000400;
constexpr std::uint32_t SUCCESS = 0;
constexpr std::uint32_t OUT_OF_RESOURCES = ENOMEM;  // no row of a table has this code
constexpr std::uint32_t LONGEST_REQUEST = 64 * 1024 * 1024;

std::uint32_t codeOf(const orvel::core::Status& status) {
    return static_cast<std::uint32_t>(status.getCode());
}

/// The library between `Load` and `Unload`. A call that is on its way keeps it alive.
class Loaded {
public:
    void add() {
        const std::lock_guard lock(mutex);
        if (!library) {
            library = std::make_shared<SimulatedLibrary>(places::stateFolder(),
                                                         places::firmwareModules());
        }
        ++count;
    }

    void remove() {
        std::shared_ptr<SimulatedLibrary> last;  // dies after the lock
        const std::lock_guard lock(mutex);
        if (count == 0 || --count > 0) return;
        last.swap(library);
    }

    std::shared_ptr<SimulatedLibrary> get() {
        const std::lock_guard lock(mutex);
        return library;
    }

private:
    std::mutex mutex;
    std::shared_ptr<SimulatedLibrary> library;  ///< guarded by mutex; null unless loaded
    std::uint64_t count = 0;                    ///< guarded by mutex
};

Loaded& loaded() {
    static Loaded one;
    return one;
}

/// What `action` returns; `otherwise` if it throws, which only want of memory or threads can cause.
template <class Action>
std::uint32_t guarded(std::uint32_t otherwise, const Action& action) noexcept {
    try {
        return action();
    } catch (...) {
        return otherwise;
    }
}

/// One request at a time, and none while the log changes: its set-up isn't guarded.
std::mutex& workMutex() {
    static std::mutex one;
    return one;
}

/// Whether lines can go to the file, which is made at need. A pipe would hold up everybody.
bool canBeLog(const std::string& path) {
    std::error_code unknown;
    const bool isThere = std::filesystem::exists(path, unknown);
    if (unknown || (isThere && !std::filesystem::is_regular_file(path, unknown))) return false;
    return static_cast<bool>(std::ofstream(path, std::ios::app));
}

std::uint32_t startLog(const std::string& path, std::uint32_t severity) {
    if (!canBeLog(path)) return codeOf(statuses::invalidInput());
    const std::lock_guard lock(workMutex());
    static bool isSetUp = false;  // a second set-up would add a second sink
    if (!isSetUp) global_logging::initialize();
    isSetUp = true;
    const auto least = std::min<std::uint32_t>(severity, boost::log::trivial::fatal);
    global_logging::setSeverity(static_cast<global_logging::severity_level>(least));
    global_logging::setFile(path, true);
    global_logging::enableFile();
    global_logging::enable();
    return SUCCESS;
}

}  // namespace

std::uint64_t GetVer() {
    return INTERFACE_VERSION;
}

std::uint32_t Load(std::int32_t) {
    return guarded(codeOf(statuses::notInitialized()), [] {
        loaded().add();
        return SUCCESS;
    });
}

void Unload() {
    guarded(SUCCESS, [] {
        loaded().remove();
        return SUCCESS;
    });
}

std::uint32_t SendXMLMessage(const char* request, std::uint32_t length, std::uint64_t* handle) {
    if (handle == nullptr) return codeOf(statuses::invalidInput());
    *handle = 0;
    const bool isRequest = request != nullptr && length > 0 && length <= LONGEST_REQUEST;
    if (!isRequest) return codeOf(statuses::invalidInput());
    return guarded(OUT_OF_RESOURCES, [&] {
        const auto library = loaded().get();
        if (!library) return codeOf(statuses::notInitialized());
        const std::lock_guard lock(workMutex());
        *handle = library->send(std::string(request, length));
        return SUCCESS;
    });
}

std::uint32_t ReceiveXMLMessage(std::uint64_t handle, void* buffer, std::uint32_t* size) {
    return guarded(OUT_OF_RESOURCES, [&] {
        const auto library = loaded().get();
        if (!library) return codeOf(statuses::notInitialized());
        return library->receive(handle, static_cast<char*>(buffer), size);
    });
}

std::uint32_t EnableLogger(const char* path, std::uint32_t length, std::uint32_t,
                           std::uint32_t severity) {
    if (path == nullptr || length == 0) return codeOf(statuses::invalidInput());
    return guarded(codeOf(statuses::invalidInput()),
                   [&] { return startLog(std::string(path, length), severity); });
}

std::uint8_t SetLSIPath(const char*, std::uint32_t) {
    return 0;
}
