// Adds to what the finders discovered.
#pragma once

#include "core/Device.h"

#include <memory>
#include <string>

namespace orvel::core {

/// Runs after all finders, on the same list: finds what needs the devices that are already there.
class DeviceFinderExtension {
public:
    explicit DeviceFinderExtension(std::string name);

    virtual ~DeviceFinderExtension() = default;

    /// Appends what it found to `devices`. An exception ends the scan.
    virtual void find(Device::Devices& devices) = 0;

    /// A new copy.
    virtual std::unique_ptr<DeviceFinderExtension> clone() const = 0;

    /// Copies the identifier list, which shares its identifiers, and the name.
    virtual void assign(const DeviceFinderExtension& other);

    const std::string& getName() const { return name; }

    const Device::ProductIdentifiers& getProductIdentifiers() const { return productIdentifiers; }

    /// The identifiers that found devices are to get; the manager hands its own over before `find`.
    void setProductIdentifiers(const Device::ProductIdentifiers& identifiers) {
        productIdentifiers = identifiers;
    }

protected:
    DeviceFinderExtension(const DeviceFinderExtension&) = default;
    DeviceFinderExtension& operator=(const DeviceFinderExtension&) = default;

private:
    std::string name;
    Device::ProductIdentifiers productIdentifiers;
};

}  // namespace orvel::core
