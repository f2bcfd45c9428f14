// The real shared object, opened as a program opens it, with drives in a folder of its own.
#pragma once

#include "tests/support/TemporaryFolder.h"

#include <dlfcn.h>

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <string>

namespace orvel::interfaces::orveli::shared_object {

/// Opens the library and binds its exports. The drives that it loads live in a folder of their own.
class OpenedLibrary {
public:
    OpenedLibrary() {
        ::setenv("NORVO_SIMULATED_DRIVES", temporary.path("simulated_drives").c_str(), 1);
        open();
    }

    OpenedLibrary(const OpenedLibrary&) = delete;
    OpenedLibrary& operator=(const OpenedLibrary&) = delete;

    ~OpenedLibrary() { close(); }

    void open() {
        handle = ::dlopen(FEATURE_LIBRARY, RTLD_NOW | RTLD_LOCAL);
        if (handle == nullptr) throw std::runtime_error(::dlerror());
        bind(getVer, "GetVer");
        bind(load, "Load");
        bind(unload, "Unload");
        bind(send, "SendXMLMessage");
        bind(receive, "ReceiveXMLMessage");
        bind(enableLogger, "EnableLogger");
        bind(setLsiPath, "SetLSIPath");
    }

    void close() {
        if (handle != nullptr) ::dlclose(handle);
        handle = nullptr;
    }

    std::filesystem::path folder() const { return temporary.path(); }

    std::uint64_t sendText(const std::string& request) const {
        std::uint64_t answer = 0;
        send(request.data(), static_cast<std::uint32_t>(request.size()), &answer);
        return answer;
    }

    /// Sends the request and fetches its answer as the tool does.
    std::string ask(const std::string& request) const {
        const std::uint64_t answer = sendText(request);
        std::uint32_t size = 0;
        if (receive(answer, nullptr, &size) != 8) return "no answer";
        std::string text(size, ' ');
        if (receive(answer, text.data(), &size) != 0) return "no answer of this size";
        return text;
    }

    std::uint64_t (*getVer)() = nullptr;
    std::uint32_t (*load)(std::int32_t) = nullptr;
    void (*unload)() = nullptr;
    std::uint32_t (*send)(const char*, std::uint32_t, std::uint64_t*) = nullptr;
    std::uint32_t (*receive)(std::uint64_t, void*, std::uint32_t*) = nullptr;
    std::uint32_t (*enableLogger)(const char*, std::uint32_t, std::uint32_t,
                                  std::uint32_t) = nullptr;
    std::uint8_t (*setLsiPath)(const char*, std::uint32_t) = nullptr;

private:
    template <class Function>
    void bind(Function& function, const char* name) {
        function = reinterpret_cast<Function>(::dlsym(handle, name));
        if (function == nullptr) throw std::runtime_error(std::string("no export ") + name);
    }

    tavik::testing::TemporaryFolder temporary;
    void* handle = nullptr;
};

/// A request that only reads.
inline constexpr const char* SHOW =
    R"(<?xml version="1.0" encoding="utf-8"?><Object name="NorvoSSD" type="GetProperties">)"
    R"(<Property name="Scan" type="boolean" value="true"/>)"
    R"(<Object name="Properties"><Property name="SerialNumber" type="string" value=""/></Object>)"
    R"(</Object>)";

/// A request that changes a drive.
inline std::string setThreshold(int index, int celsius) {
    return R"(<?xml version="1.0" encoding="utf-8"?><Object name="NVMeFeatures" type="SetProperty">)"
           R"(<Property name="Scan" type="boolean" value="true"/>)"
           R"(<List name="Devices"><Object name="Device"><Property name="Index" type="string" )"
           R"(value=")" +
           std::to_string(index) +
           R"("/></Object></List><Object name="Properties"><Property name="TempThreshold" )"
           R"(type="sint32" value=")" +
           std::to_string(celsius) + R"("/></Object></Object>)";
}

}  // namespace orvel::interfaces::orveli::shared_object
