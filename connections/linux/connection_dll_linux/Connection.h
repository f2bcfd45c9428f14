// A connection to a shared library on the POSIX dynamic loader.
#pragma once

#include "connections/common/dll/Connection.h"

#include <memory>
#include <string>

namespace orvel::connections::dll {

/// Belongs to one thread at a time. Libraries stay mapped after `close`.
class Connection : public common::dll::Connection {
public:
    explicit Connection(std::string path);
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    /// Closes the library; the status is dropped.
    ~Connection() override;

    /// Success if it is open already. A failure has category 1 and `errno`, which may be 0; the
    /// loader's own words go to the log.
    core::Status open() override;
    core::Status close() override;
    bool isOpen() override;
    std::unique_ptr<core::Connection> clone() const override;
    void* loadFunction(const std::string& name) override;

    /// Adds nothing to the base's.
    virtual void assign(const Connection& other);
    using common::dll::Connection::assign;
};

}  // namespace orvel::connections::dll
