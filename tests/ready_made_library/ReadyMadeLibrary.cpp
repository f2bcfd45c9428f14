// A feature library with ready-made answers, for tests of the way to a library and back.
#include "tests/ready_made_library/ReadyMadeAnswer.h"

#include <algorithm>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>

#define EXPORTED extern "C" __attribute__((visibility("default")))

namespace {

constexpr std::uint64_t INTERFACE_VERSION = 20000400;
constexpr std::uint32_t SUCCESS = 0;
constexpr std::uint32_t INVALID_INPUT = 6;
constexpr std::uint32_t INVALID_BUFFER_SIZE = 8;

/// The answers that were not fetched yet, by message handle.
std::map<std::uint64_t, std::string>& answers() {
    static std::map<std::uint64_t, std::string> all;
    return all;
}

}  // namespace

EXPORTED std::uint64_t GetVer();
EXPORTED void Load(std::int32_t mode);
EXPORTED void Unload();
EXPORTED void SendXMLMessage(const char* request, std::uint32_t length, std::uint64_t* handle);
EXPORTED std::uint32_t ReceiveXMLMessage(std::uint64_t handle, char* buffer, std::uint32_t* size);
EXPORTED std::uint32_t EnableLogger(const char* path, std::uint32_t length, int append, int level);
EXPORTED bool SetLSIPath(const char* path, std::uint32_t length);

std::uint64_t GetVer() {
    return INTERFACE_VERSION;
}

void Load(std::int32_t /*mode*/) {}

void Unload() {
    answers().clear();
}

void SendXMLMessage(const char* request, std::uint32_t length, std::uint64_t* handle) {
    static std::uint64_t lastHandle = 0;
    *handle = ++lastHandle;
    answers()[*handle] = tavik::testing::readyMadeAnswer(std::string_view(request, length));
}

std::uint32_t ReceiveXMLMessage(std::uint64_t handle, char* buffer, std::uint32_t* size) {
    const auto answer = answers().find(handle);
    if (answer == answers().end()) return INVALID_INPUT;
    const auto needed = static_cast<std::uint32_t>(answer->second.size());
    const bool fits = buffer != nullptr && *size >= needed;
    *size = needed;
    if (!fits) return INVALID_BUFFER_SIZE;
    std::copy(answer->second.begin(), answer->second.end(), buffer);
    answers().erase(answer);
    return SUCCESS;
}

std::uint32_t EnableLogger(const char* /*path*/, std::uint32_t /*length*/, int /*append*/,
                           int /*level*/) {
    return SUCCESS;
}

bool SetLSIPath(const char* /*path*/, std::uint32_t /*length*/) {
    return true;
}
