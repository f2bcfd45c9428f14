// Fills in which product a drive is.
#pragma once

#include "core/Status.h"

#include <memory>

namespace orvel::core {

class Device;

/// Runs last when a device is identified: judges by what the protocol identifiers filled in.
class ProductIdentifier {
public:
    virtual ~ProductIdentifier() = default;

    /// Fills in attributes of `device`. What failed shows in the attributes: `Device::identify`
    /// drops the status.
    virtual Status identify(Device& device) = 0;

    /// A new copy.
    virtual std::unique_ptr<ProductIdentifier> clone() const = 0;

protected:
    ProductIdentifier() = default;
    ProductIdentifier(const ProductIdentifier&) = default;
    ProductIdentifier& operator=(const ProductIdentifier&) = default;
};

}  // namespace orvel::core
