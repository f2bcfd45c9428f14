// Discovers devices of one kind of transport.
#pragma once

#include "core/Device.h"

#include <memory>
#include <string>

namespace orvel::core {

/// Opens the interfaces of the operating system for one kind of transport. A manager knows it by
/// its name.
class DeviceFinder {
public:
    explicit DeviceFinder(std::string name);

    virtual ~DeviceFinder() = default;

    /// Appends what it found to `devices`. An exception ends the scan.
    virtual void find(Device::Devices& devices) = 0;

    /// A new copy.
    virtual std::unique_ptr<DeviceFinder> clone() const = 0;

    /// Copies the identifier list, which shares its identifiers, and the name.
    virtual void assign(const DeviceFinder& other);

    const std::string& getName() const { return name; }

    const Device::ProductIdentifiers& getProductIdentifiers() const { return productIdentifiers; }

    /// The identifiers that found devices are to get; the manager hands its own over before `find`.
    void setProductIdentifiers(const Device::ProductIdentifiers& identifiers) {
        productIdentifiers = identifiers;
    }

protected:
    DeviceFinder(const DeviceFinder&) = default;
    DeviceFinder& operator=(const DeviceFinder&) = default;

private:
    Device::ProductIdentifiers productIdentifiers;
    std::string name;
};

}  // namespace orvel::core
