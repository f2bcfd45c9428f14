// What Identify tells of namespaces and controllers, for every generation of NVMe drives.
#pragma once

#include "core/Device.h"
#include "core/Payload.h"

#include <cstdint>
#include <vector>

namespace orvel::interfaces::orveli::jobs {

/// A drive without namespace management has one controller, to which all namespaces are attached;
/// it doesn't know the structures that go with management. The answers are the same as if it did.
///
/// Each operation throws core::Status by value: 10/80 for a namespace that isn't allocated, 10/33
/// for lists that make no sense, else as `nvme_access::identify` does.
class NvmeIdentifier {
public:
    /// Identifies the controller.
    explicit NvmeIdentifier(core::Device& device);

    /// The Identify Controller data structure.
    const core::Payload& getController() const { return controller; }

    /// The Identify Namespace data structure of an allocated namespace, attached or not.
    core::Payload readNamespace(std::uint32_t nsid) const;

    std::vector<std::uint32_t> listAttachedNamespaces() const;
    std::vector<std::uint32_t> listAllocatedNamespaces() const;
    std::vector<std::uint16_t> listControllers() const;
    std::vector<std::uint16_t> listControllersOf(std::uint32_t nsid) const;

private:
    bool managesNamespaces() const;
    std::uint16_t ownIdentifier() const;
    std::vector<std::uint32_t> listNamespaces(std::uint8_t cns) const;
    std::vector<std::uint16_t> listControllers(std::uint8_t cns, std::uint32_t nsid) const;

    core::Device& device;
    core::Payload controller;
};

}  // namespace orvel::interfaces::orveli::jobs
