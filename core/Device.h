// One drive as the tool-kit knows it.
#pragma once

#include "core/AttributeHolder.h"
#include "core/CommandHistory.h"
#include "core/CommandPath.h"
#include "core/CommandResult.h"
#include "core/Partition.h"
#include "core/ProductIdentifier.h"
#include "core/ProtocolIdentifier.h"

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace orvel::core {

/// Attributes, the command paths that reach the drive, the command sets that each path serves, the
/// identifiers that fill in the attributes, child devices, partitions, and a history of what was
/// run. A value: copies are deep, with paths and identifiers cloned and children copied.
///
/// The history alone is guarded. Everything else belongs to the thread that works on the device.
class Device : public AttributeHolder {
public:
    using CommandPaths = std::map<std::string, std::shared_ptr<CommandPath>>;  ///< by path name
    using CommandSets = std::map<std::string, std::string>;  ///< set name to path name
    using ProtocolIdentifiers = std::vector<std::shared_ptr<ProtocolIdentifier>>;
    using ProductIdentifiers = std::vector<std::shared_ptr<ProductIdentifier>>;
    using Devices = std::vector<std::shared_ptr<Device>>;
    using Partitions = std::vector<Partition>;

    Device() = default;
    Device(const Device& other);
    Device& operator=(const Device& other);
    ~Device() = default;

    /// Inserts or replaces under the path's name; null is ignored.
    void addCommandPath(const std::shared_ptr<CommandPath>& path);

    /// Null if there is no path of this name.
    std::shared_ptr<CommandPath> getCommandPath(const std::string& name) const;

    /// Lets the path serve the set, in place of another.
    void addCommandSet(const std::string& setName, const std::string& pathName);
    void removeCommandSet(const std::string& setName);
    bool supportsCommandSet(const std::string& setName) const;

    /// Time limit of the set's path, in seconds; an unknown set or path is ignored.
    void setTimeout(std::int32_t seconds, const std::string& setName);

    /// -1 for an unknown set or path.
    std::int32_t getTimeout(const std::string& setName) const;

    /// Sets every path.
    void setTimeouts(std::int32_t seconds);

    /// Sets the paths of the table, whether this device has them or not; null is ignored.
    static void setTimeouts(const std::map<std::shared_ptr<CommandPath>, std::int32_t>& seconds);

    void setCommandHistorySize(std::uint32_t size) { commandHistory.setMaxSize(size); }

    // Each stores a copy.
    void addProtocolIdentifier(const ProtocolIdentifier& identifier);
    void addProductIdentifier(const ProductIdentifier& identifier);
    void addChildDevice(const Device& device);
    void addPartition(const Partition& partition);

    // The containers themselves; the pointers in them are never null.
    CommandPaths& getCommandPaths() { return commandPaths; }

    const CommandPaths& getCommandPaths() const { return commandPaths; }

    CommandSets& getCommandSets() { return commandSets; }

    const CommandSets& getCommandSets() const { return commandSets; }

    ProtocolIdentifiers& getProtocolIdentifiers() { return protocolIdentifiers; }

    const ProtocolIdentifiers& getProtocolIdentifiers() const { return protocolIdentifiers; }

    ProductIdentifiers& getProductIdentifiers() { return productIdentifiers; }

    const ProductIdentifiers& getProductIdentifiers() const { return productIdentifiers; }

    Devices& getChildDevices() { return childDevices; }

    const Devices& getChildDevices() const { return childDevices; }

    Partitions& getPartitions() { return partitions; }

    const Partitions& getPartitions() const { return partitions; }

    CommandHistory& getCommandHistory() { return commandHistory; }

    const CommandHistory& getCommandHistory() const { return commandHistory; }

    /// Sends the command down the path that serves its set, and keeps the result in the history.
    /// Without such a path the result has code 35, category 0, and no command path. An exception
    /// of the path passes through, and nothing is kept.
    CommandResult sendCommand(const Command& command);
    CommandResult sendCommand(const Command& command, const Payload& input);

    /// Runs the protocol identifiers, the children's `identify` and the product identifiers, and
    /// works out what follows from the attributes. Always success: failures show in attributes.
    Status identify();

    /// Core status 2 if there are partitions, or a path says so; otherwise 3.
    Status checkPartitions();

    /// Whether there are paths and all of them reach the device.
    bool isAvailable();

private:
    /// The path that serves the set, or null.
    std::shared_ptr<CommandPath> findPath(const std::string& setName) const;

    // The attributes, in the base class, come first.
    CommandPaths commandPaths;
    CommandSets commandSets;
    ProtocolIdentifiers protocolIdentifiers;
    ProductIdentifiers productIdentifiers;
    Devices childDevices;
    Partitions partitions;
    CommandHistory commandHistory;
};

}  // namespace orvel::core
