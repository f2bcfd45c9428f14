// A feature library that does what a test tells it. Its orders are files in the folder `standin`
// of the process's working directory; every call is written down there. Without that folder it
// gives ready-made answers and leaves no trace. The orders, each of them optional:
//
//   version              what GetVer returns
//   reply.xml            the answer to each request; reply.2.xml for the second alone, and so on
//   receive_codes        what the calls of ReceiveXMLMessage return in turn; "-" or no word more:
//                        as it comes. Nothing is copied with a code other than 0
//   size_bias            added to the size that a code 8 reports
//   filled_size          the size that is reported with the answer, whatever was copied
//   enable_logger_code   what EnableLogger returns
//   set_lsi_path         what the calls of SetLSIPath return in turn: "true" or "false"
//   unload_says          bytes that Unload writes to standard output
//
// What it writes: `calls`, a line for each call with its arguments and its outcome, and the bytes
// of each request: `request.xml`, `request.2.xml` and so on.
//
// Each export can be left out with a macro, such as WITHOUT_GetVer.
#include "tests/ready_made_library/ReadyMadeAnswer.h"

#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <optional>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#define EXPORTED extern "C" __attribute__((visibility("default")))

namespace {

constexpr std::uint64_t INTERFACE_VERSION = 20000400;
constexpr std::uint32_t SUCCESS = 0;
constexpr std::uint32_t INVALID_INPUT = 6;
constexpr std::uint32_t INVALID_BUFFER_SIZE = 8;

/// Handles lie beyond 32 bits, so that one that was cut on its way is not known again.
constexpr std::uint64_t FIRST_HANDLE = 0x100000001;

const std::filesystem::path ORDERS = "standin";

std::optional<std::string> order(const std::string& name) {
    std::ifstream file(ORDERS / name, std::ios::binary);
    if (!file) return std::nullopt;
    // In blocks: benchmarks give answers of megabytes.
    std::ostringstream text;
    text << file.rdbuf();
    return std::move(text).str();
}

std::int64_t number(const std::string& name, std::int64_t otherwise) {
    const auto text = order(name);
    return text ? std::stoll(*text) : otherwise;
}

/// The word of the order for the call of this position, counted from 0; empty for none.
std::string word(const std::string& name, std::size_t position) {
    std::istringstream text(order(name).value_or(""));
    const std::vector<std::string> words{std::istream_iterator<std::string>(text), {}};
    return position < words.size() && words[position] != "-" ? words[position] : "";
}

void writeDown(const std::string& call) {
    if (std::filesystem::is_directory(ORDERS))
        std::ofstream(ORDERS / "calls", std::ios::app) << call << '\n';
}

/// `stem`.xml for the first, `stem`.2.xml for the second. Without requests it has no use.
[[maybe_unused]] std::string numbered(const std::string& stem, std::uint64_t position) {
    return position == 1 ? stem + ".xml" : stem + "." + std::to_string(position) + ".xml";
}

std::map<std::uint64_t, std::string>& answers() {
    static std::map<std::uint64_t, std::string> all;
    return all;
}

}  // namespace

#ifndef WITHOUT_GetVer
EXPORTED std::uint64_t GetVer();

std::uint64_t GetVer() {
    const auto version = order("version");
    const std::uint64_t value = version ? std::stoull(*version) : INTERFACE_VERSION;
    writeDown("GetVer() = " + std::to_string(value));
    return value;
}
#endif

#ifndef WITHOUT_Load
EXPORTED void Load(std::int32_t mode);

void Load(std::int32_t mode) {
    writeDown("Load(" + std::to_string(mode) + ")");
}
#endif

#ifndef WITHOUT_Unload
EXPORTED void Unload();

void Unload() {
    writeDown("Unload()");
    const std::string text = order("unload_says").value_or("");
    [[maybe_unused]] const ssize_t written = ::write(STDOUT_FILENO, text.data(), text.size());
}
#endif

#ifndef WITHOUT_SendXMLMessage
EXPORTED void SendXMLMessage(const char* request, std::uint32_t length, std::uint64_t* handle);

void SendXMLMessage(const char* request, std::uint32_t length, std::uint64_t* handle) {
    static std::uint64_t count = 0;
    ++count;
    const std::string text(request, length);
    *handle = FIRST_HANDLE + count - 1;
    writeDown("SendXMLMessage(" + numbered("request", count) + ") handle " +
              std::to_string(*handle));
    if (std::filesystem::is_directory(ORDERS))
        std::ofstream(ORDERS / numbered("request", count), std::ios::binary) << text;

    auto answer = order(numbered("reply", count));
    if (!answer) answer = order("reply.xml");
    answers()[*handle] = answer ? *std::move(answer) : tavik::testing::readyMadeAnswer(text);
}
#endif

#ifndef WITHOUT_ReceiveXMLMessage
EXPORTED std::uint32_t ReceiveXMLMessage(std::uint64_t handle, char* buffer, std::uint32_t* size);

namespace {

/// Copies the answer if it fits and the code asked for lets it, and tells its size.
std::uint32_t deliver(const std::string& answer, const std::string& codeWord, char* buffer,
                      std::uint32_t* size) {
    const bool fits = *size >= answer.size() && (buffer != nullptr || answer.empty());
    const std::uint32_t code = codeWord.empty() ? (fits ? SUCCESS : INVALID_BUFFER_SIZE)
                                                : static_cast<std::uint32_t>(std::stoul(codeWord));
    const auto needed = static_cast<std::int64_t>(answer.size());
    if (code == INVALID_BUFFER_SIZE)
        *size = static_cast<std::uint32_t>(needed + number("size_bias", 0));
    if (code != SUCCESS) return code;
    if (fits) std::copy(answer.begin(), answer.end(), buffer);
    *size = static_cast<std::uint32_t>(number("filled_size", fits ? needed : 0));
    return code;
}

}  // namespace

std::uint32_t ReceiveXMLMessage(std::uint64_t handle, char* buffer, std::uint32_t* size) {
    static std::size_t count = 0;
    std::string call = "ReceiveXMLMessage(" + std::to_string(handle) + ", " +
                       (buffer == nullptr ? "null" : "buffer") + ", " + std::to_string(*size) + ")";
    const auto answer = answers().find(handle);
    const std::uint32_t code =
        answer == answers().end()
            ? INVALID_INPUT
            : deliver(answer->second, word("receive_codes", count), buffer, size);
    ++count;
    writeDown(call + " = " + std::to_string(code) + ", size " + std::to_string(*size));
    return code;
}
#endif

#ifndef WITHOUT_EnableLogger
EXPORTED std::uint32_t EnableLogger(const char* path, std::uint32_t length, int append, int level);

std::uint32_t EnableLogger(const char* path, std::uint32_t length, int append, int level) {
    const auto code = static_cast<std::uint32_t>(number("enable_logger_code", SUCCESS));
    writeDown("EnableLogger(\"" + std::string(path, length) + "\", " + std::to_string(append) +
              ", " + std::to_string(level) + ") = " + std::to_string(code));
    return code;
}
#endif

#ifndef WITHOUT_SetLSIPath
EXPORTED bool SetLSIPath(const char* path, std::uint32_t length);

bool SetLSIPath(const char* path, std::uint32_t length) {
    static std::size_t count = 0;
    const bool isTaken = word("set_lsi_path", count++) != "false";
    writeDown("SetLSIPath(\"" + std::string(path, length) +
              "\") = " + (isTaken ? "true" : "false"));
    return isTaken;
}
#endif
