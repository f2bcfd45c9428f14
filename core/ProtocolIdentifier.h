// Fills in what a drive says of itself in the words of its protocol.
#pragma once

#include "core/Status.h"

#include <memory>

namespace orvel::core {

class Device;

/// Runs first when a device is identified: asks the drive by its command sets.
class ProtocolIdentifier {
public:
    virtual ~ProtocolIdentifier() = default;

    /// Fills in attributes of `device`. What failed shows in the attributes: `Device::identify`
    /// drops the status.
    virtual Status identify(Device& device) = 0;

    /// A new copy.
    virtual std::unique_ptr<ProtocolIdentifier> clone() const = 0;

protected:
    ProtocolIdentifier() = default;
    ProtocolIdentifier(const ProtocolIdentifier&) = default;
    ProtocolIdentifier& operator=(const ProtocolIdentifier&) = default;
};

}  // namespace orvel::core
