// Identifiers by which a request may name a drive, where they are more than plain text.
#pragma once

#include "core/Device.h"

#include <cstdint>
#include <optional>
#include <string>

namespace orvel::core {

/// A drive behind a host adapter's CSMI interface.
struct CsmiIdentifiers {
    std::uint64_t sasAddress;  ///< as the attribute `SAS Address` reads, little-endian
    std::int32_t scsiPort;
};

/// Reads a SAS address in hexadecimal and a SCSI port in decimal, joined by ",". Nothing for a text
/// of another form; one that is not two parts is logged.
std::optional<CsmiIdentifiers> readCsmiIdentifiers(const std::string& text);

/// Whether the device is a CSMI device at this port and this address.
bool matches(const Device& device, const CsmiIdentifiers& identifiers);

/// The `PNP String` of the drive that has this device interface path of the Windows platform, such
/// as "\\?\scsi#disk&ven_norvo#4&1a2b&0&000000#{53f56307-b6bf-11d0-94f2-00a0c91efb8b}". Nothing for
/// a text of fewer than 5 characters.
std::optional<std::string> readDriveId(const std::string& text);

}  // namespace orvel::core
