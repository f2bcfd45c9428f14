// One file with firmware for drives, as docs/firmware-modules.md lays it out.
#pragma once

#include "core/Payload.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orvel::interfaces::orveli {

/// What such a file says. A file that breaks a rule is read as far as it can be, so that somebody
/// can tell for which drives it was meant, and is never to be sent.
struct FirmwareModule {
    enum class Activation { AT_RESET, IMMEDIATE };

    static constexpr std::size_t MAX_HEADER = 4096;       ///< bytes
    static constexpr std::size_t MAX_IMAGE = 0x400'0000;  ///< bytes: 64 MiB

    /// The bytes of a whole file.
    static FirmwareModule parse(std::string_view bytes);

    /// Whether drives with this firmware may take it.
    bool canUpgrade(const std::string& version) const;

    std::string product;                ///< a family's code name
    std::string version;                ///< the firmware revision that drives have with it
    std::string audience;               ///< "Generic", or the OEM whose drives it is for
    std::vector<std::string> upgrades;  ///< revisions; none for any
    Activation activation = Activation::AT_RESET;
    core::Payload image;  ///< empty if there is any damage
    std::string damage;   ///< what is wrong, as a sentence; empty for a good file
};

}  // namespace orvel::interfaces::orveli
