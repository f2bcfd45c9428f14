// The devices of one run: discovered, ordered, numbered, and looked up.
#pragma once

#include "core/Attribute.h"
#include "core/Device.h"
#include "core/DeviceFinder.h"
#include "core/DeviceFinderExtension.h"
#include "core/ProductIdentifier.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace orvel::core {

/// Merges what its finders discover, puts it into a fixed order, numbers it from 0 in the attribute
/// `Index`, and answers look-ups by what a request may carry. Nothing is guarded: no other thread
/// may use the manager meanwhile.
class DeviceManager {
public:
    DeviceManager() = default;
    DeviceManager(const DeviceManager&) = delete;
    DeviceManager& operator=(const DeviceManager&) = delete;
    ~DeviceManager() = default;

    /// Replaces the devices by those that the finders, and then the extensions, discover; two that
    /// report one drive leave two entries. Plain drives come before RAID members, both in the order
    /// of their `Device Path`. An exception of a finder passes through and leaves no device.
    void scan();

    /// The first device that `identifier` tells. Its name is the kind: "Index", "SerialNumber",
    /// "CSMIIdentifiers", "DriveId", "DriveLetter" or "Path". Null for another kind, a malformed
    /// value, or no match.
    std::shared_ptr<Device> GetDevice(const Attribute& identifier) const;

    /// The first device of this serial number, in any case, that has a partition of exactly this
    /// path; or null.
    std::shared_ptr<Device> GetDevice(const std::string& partitionPath,
                                      const std::string& serialNumber) const;

    // A copy goes to the end of the list, in place of one of the same name.
    void addDeviceFinder(const DeviceFinder& finder);
    void addDeviceFinderExtension(const DeviceFinderExtension& extension);

    // Null if there is none of this name.
    std::shared_ptr<DeviceFinder> getDeviceFinder(const std::string& name) const;
    std::shared_ptr<DeviceFinderExtension> getDeviceFinderExtension(const std::string& name) const;

    /// Stores a copy, for every finder and extension of later scans.
    void addProductIdentifier(const ProductIdentifier& identifier);

    // Removes one device and numbers the others anew, from 0. False if it is not there.
    bool removeDevice(const std::shared_ptr<Device>& device);
    bool removeDevice(std::int32_t index);

    /// Appends a copy, which keeps the `Index` that it came with.
    void addDevice(const Device& device);

    /// The list itself; the pointers in it are never null.
    Device::Devices& getDevices() { return devices; }

    const Device::Devices& getDevices() const { return devices; }

    /// Whether `scan` runs each device's `identify`; it doesn't unless told to.
    void setIdentifyOnScan(bool identify) { identifyOnScan = identify; }

private:
    using Predicate = std::function<bool(const Device&)>;

    std::shared_ptr<Device> findFirst(const Predicate& matches) const;

    /// False for the end of the list.
    bool removeAt(Device::Devices::iterator place);

    std::vector<std::shared_ptr<DeviceFinder>> deviceFinders;
    std::vector<std::shared_ptr<DeviceFinderExtension>> deviceFinderExtensions;
    Device::ProductIdentifiers productIdentifiers;
    Device::Devices devices;
    bool identifyOnScan = false;
};

}  // namespace orvel::core
