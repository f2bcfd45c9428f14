// The link to the feature library: the only place that knows its exports and buffers. Text in,
// text out.
#pragma once

#include "connections/linux/connection_dll_linux/Connection.h"
#include "interfaces/cli/cliframework/ErrorResult.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

namespace tavik::norvossd {

/// The library's calls block until the job is done. One thread, one call at a time.
class FeatureLibrary {
public:
    /// What fetching one answer came to.
    struct Answer {
        std::uint32_t code = 0;  ///< 0 for success
        bool hasData = false;    ///< false: `text` means nothing
        std::string text;
    };

    FeatureLibrary() = default;
    FeatureLibrary(const FeatureLibrary&) = delete;
    FeatureLibrary& operator=(const FeatureLibrary&) = delete;

    /// Unloads and closes the library.
    ~FeatureLibrary();

    /// Finds and opens the library, checks its interface version, binds its exports and starts
    /// it; null on success. The installation folder wins over the program's own. To be called
    /// once.
    std::unique_ptr<cli::framework::ErrorResult> load();

    /// Whether the exports that carry messages are bound.
    bool canSend() const { return sendXmlMessage != nullptr; }

    bool canReceive() const { return receiveXmlMessage != nullptr; }

    /// Hands a request over; the handle fetches its answer. Needs `canSend`.
    std::uint64_t send(const std::string& request);

    /// Fetches an answer, after one resize if the library asks for it. Needs `canReceive`.
    Answer receive(std::uint64_t handle);

    bool hasLogger() const { return enableLogger != nullptr; }

    /// Switches the library's log on; needs `hasLogger`. False if it refuses the file.
    bool enableLog(const std::string& file);

    /// Tells the library where its adapter library may lie; does nothing if it takes no path.
    void announceAdapter();

private:
    // Lengths are passed at the width of a register, so that the library may read 32 bits or 64.
    using SendXmlMessage = void (*)(const char*, std::size_t, std::uint64_t*);
    using ReceiveXmlMessage = std::uint32_t (*)(std::uint64_t, void*, std::uint32_t*);
    using EnableLogger = std::uint32_t (*)(const char*, std::size_t, std::uint32_t, std::uint32_t);
    using SetLsiPath = std::uint8_t (*)(const char*, std::size_t);

    std::unique_ptr<cli::framework::ErrorResult> bind();
    std::unique_ptr<cli::framework::ErrorResult> refuse(const char* message);

    std::unique_ptr<orvel::connections::dll::Connection> connection;  ///< null until found
    SendXmlMessage sendXmlMessage = nullptr;                          ///< null until bound
    ReceiveXmlMessage receiveXmlMessage = nullptr;
    EnableLogger enableLogger = nullptr;  ///< may stay null
    SetLsiPath setLsiPath = nullptr;      ///< may stay null
};

}  // namespace tavik::norvossd
