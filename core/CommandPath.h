// A route that carries commands to a device.
#pragma once

#include "core/Command.h"
#include "core/Connection.h"
#include "core/Payload.h"
#include "core/Status.h"

#include <cstdint>
#include <memory>
#include <string>

namespace orvel::core {

class AsyncEngine;
class Device;
struct CommandResult;

/// A connection, a name, a time limit and, where the transport wants it, an asynchronous engine.
/// Concrete paths derive from it. A path has no lock: each thread works on its own copy.
class CommandPath {
public:
    static constexpr std::int32_t DEFAULT_TIMEOUT_SECONDS = 5;

    /// `connection` may be null for a transport that needs none.
    CommandPath(std::shared_ptr<Connection> connection, std::string name);

    CommandPath(const CommandPath&) = delete;
    CommandPath& operator=(const CommandPath&) = delete;

    /// Stops the engine, if there is one, and deletes it. Not on a thread of that engine.
    virtual ~CommandPath();

    /// What this route knows of partitions on the device: the core statuses 2 or 3, or another if
    /// it can't tell.
    virtual Status checkPartitions() = 0;

    /// A new copy; concrete paths make themselves anew and `assign`.
    virtual std::unique_ptr<CommandPath> clone() const = 0;

    /// Carries one command out, synchronously. Failure is told in the result's status.
    virtual CommandResult send(const Command& command, Payload input, Device& device) = 0;

    /// Whether the device can be reached this way now.
    virtual bool isAvailable(Device& device) = 0;

    /// Copies name, timeout and the handle on the connection. An engine of `other` replaces this
    /// path's, which is stopped, by its clone. Intended: without one, this path keeps its own.
    virtual void assign(const CommandPath& other);

    /// Opens the connection. Without one: code 36, category 0.
    Status open();

    /// Closes the connection. Without one: code 53, category 0.
    Status close();

    /// False without a connection.
    bool isOpen() const;

    const std::string& getName() const { return name; }

    std::int32_t getTimeout() const { return timeout; }  ///< seconds

    void setTimeout(std::int32_t seconds) { timeout = seconds; }

    const std::shared_ptr<Connection>& getConnection() const { return connection; }

    /// Null unless the path uses one.
    AsyncEngine* getAsyncEngine() const { return asyncEngine.get(); }

protected:
    /// Stops and deletes the engine that the path had.
    void setAsyncEngine(std::unique_ptr<AsyncEngine> engine);

private:
    std::shared_ptr<Connection> connection;
    std::string name;
    std::unique_ptr<AsyncEngine> asyncEngine;
    std::int32_t timeout = DEFAULT_TIMEOUT_SECONDS;
};

}  // namespace orvel::core
