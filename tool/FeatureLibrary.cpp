#include "tool/FeatureLibrary.h"

#include "core/Files.h"
#include "core/Payload.h"
#include "core/Strings.h"
#include "features/JobInterfaceStatuses.h"
#include "tool/Installation.h"

#include <algorithm>
#include <array>
#include <new>
#include <utility>

namespace tavik::norvossd {

namespace {

using cli::framework::ErrorResult;
using orvel::connections::dll::Connection;
using orvel::core::Payload;
using orvel::core::Status;
namespace files = orvel::core::files;
namespace statuses = orvel::interfaces::orveli::statuses;
namespace strings = orvel::core::strings;

constexpr const char* LIBRARY_NAME = "libNorvo.SSDFeatures.so.2.0.0";
constexpr const char* ADAPTER_NAME = "libLSI.AdapterAPI.so.4.02";
constexpr std::uint64_t INTERFACE_VERSION = 20000400;

/// In the order of the search; the last one that exists wins.
std::array<std::string, 2> librarySearchList() {
    return {strings::getExecutablePath() + LIBRARY_NAME, installation::path(LIBRARY_NAME)};
}

std::array<std::string, 2> adapterSearchList() {
    return {strings::getExecutablePath() + ADAPTER_NAME,
            std::string("/usr/lib/tavik/") + ADAPTER_NAME};
}

/// The export of this name, null if the library has none.
template <typename Function>
Function exported(Connection& connection, const char* name) {
    return reinterpret_cast<Function>(connection.loadFunction(name));
}

/// Whether the library's code is the code of `status`; its category does not cross.
bool isCode(std::uint32_t code, const Status& status) {
    return code == static_cast<std::uint32_t>(status.getCode());
}

}  // namespace

FeatureLibrary::~FeatureLibrary() {
    if (connection == nullptr || !connection->isOpen()) return;
    if (const auto unload = exported<void (*)()>(*connection, "Unload")) {
        unload();
        static_cast<void>(connection->close());
    }
}

std::unique_ptr<ErrorResult> FeatureLibrary::load() {
    connection.reset();
    for (const std::string& path : librarySearchList()) {
        if (files::isReadable(path)) connection = std::make_unique<Connection>(path);
    }
    if (connection == nullptr) {
        return std::make_unique<ErrorResult>(1, std::string("Failed to find valid library: ") +
                                                    LIBRARY_NAME);
    }
    if (connection->open() != Status()) {
        return refuse("Failed to open connection to ORVEL Interface.");
    }
    const auto getVersion = exported<std::uint64_t (*)()>(*connection, "GetVer");
    if (getVersion == nullptr || getVersion() != INTERFACE_VERSION) {
        return refuse("Invalid ORVEL Interface version.");
    }
    return bind();
}

std::unique_ptr<ErrorResult> FeatureLibrary::bind() {
    const auto start = exported<void (*)(std::int32_t)>(*connection, "Load");
    sendXmlMessage = exported<SendXmlMessage>(*connection, "SendXMLMessage");
    receiveXmlMessage = exported<ReceiveXmlMessage>(*connection, "ReceiveXMLMessage");
    enableLogger = exported<EnableLogger>(*connection, "EnableLogger");
    setLsiPath = exported<SetLsiPath>(*connection, "SetLSIPath");
    if (start == nullptr || sendXmlMessage == nullptr || receiveXmlMessage == nullptr) {
        return refuse("Failed to load ORVEL Interface functions.");
    }
    start(1);
    return nullptr;
}

std::unique_ptr<ErrorResult> FeatureLibrary::refuse(const char* message) {
    static_cast<void>(connection->close());
    sendXmlMessage = nullptr;
    receiveXmlMessage = nullptr;
    enableLogger = nullptr;
    setLsiPath = nullptr;
    return std::make_unique<ErrorResult>(1, message);
}

std::uint64_t FeatureLibrary::send(const std::string& request) {
    std::uint64_t handle = 0;
    sendXmlMessage(request.data(), request.size(), &handle);
    return handle;
}

FeatureLibrary::Answer FeatureLibrary::receive(std::uint64_t handle) {
    Payload payload;
    std::uint32_t size = 0;
    std::uint32_t code = receiveXmlMessage(handle, payload.data(), &size);
    try {
        if (isCode(code, statuses::invalidBufferSize())) {
            payload = Payload(size);
            code = receiveXmlMessage(handle, payload.data(), &size);
        }
        if (payload.data() == nullptr) return {code, false, {}};
        // A size beyond the buffer is the library's mistake; what lies there is not the answer's.
        const std::uint32_t length = std::min(size, payload.size());
        return {code, true, std::string(payload.data(), payload.data() + length)};
    } catch (const std::bad_alloc&) {
        // An answer too large for this machine is one that could not be fetched.
        return {code, false, {}};
    }
}

bool FeatureLibrary::enableLog(const std::string& file) {
    return !isCode(enableLogger(file.data(), file.size(), 0, 1), statuses::invalidInput());
}

void FeatureLibrary::announceAdapter() {
    if (setLsiPath == nullptr) return;
    for (const std::string& path : adapterSearchList()) {
        if (setLsiPath(path.data(), path.size()) != 0) return;
    }
}

}  // namespace tavik::norvossd
