// Stand-ins for what finds drives and for what identifies them.
#pragma once

#include "core/Device.h"
#include "core/DeviceFinder.h"
#include "core/DeviceFinderExtension.h"
#include "core/ProductIdentifier.h"
#include "core/ProtocolIdentifier.h"
#include "core/Status.h"

#include <functional>
#include <memory>
#include <string>
#include <utility>

namespace orvel::core::doubles {

/// Finds what its work says, and nothing without work. Clones share what the work refers to.
template <class Base>
class FakeDiscovery : public Base {
public:
    using Work = std::function<void(const Base& self, Device::Devices& devices)>;

    explicit FakeDiscovery(const std::string& name, Work work = {})
        : Base(name),
          work(std::move(work)) {}

    void find(Device::Devices& devices) override {
        if (work) work(*this, devices);
    }

    std::unique_ptr<Base> clone() const override { return std::make_unique<FakeDiscovery>(*this); }

private:
    Work work;
};

using FakeFinder = FakeDiscovery<DeviceFinder>;
using FakeExtension = FakeDiscovery<DeviceFinderExtension>;

/// Does to the device what its work says, and fails all the same.
template <class Base>
class FakeIdentifier : public Base {
public:
    using Work = std::function<void(Device& device)>;

    explicit FakeIdentifier(std::string name, Work work = {})
        : name(std::move(name)),
          work(std::move(work)) {}

    Status identify(Device& device) override {
        if (work) work(device);
        return {status_categories::SYSTEM, 5, "System error."};
    }

    std::unique_ptr<Base> clone() const override { return std::make_unique<FakeIdentifier>(*this); }

    const std::string& getName() const { return name; }

private:
    std::string name;
    Work work;
};

using FakeProductIdentifier = FakeIdentifier<ProductIdentifier>;
using FakeProtocolIdentifier = FakeIdentifier<ProtocolIdentifier>;

}  // namespace orvel::core::doubles
