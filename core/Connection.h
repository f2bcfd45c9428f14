// An open path to something that commands go through.
#pragma once

#include "core/Status.h"

#include <memory>

namespace orvel::core {

class Connection {
public:
    virtual ~Connection() = default;
    virtual Status open() = 0;
    virtual Status close() = 0;
    virtual bool isOpen() = 0;

    /// A new connection of the same kind to the same thing, closed.
    virtual std::unique_ptr<Connection> clone() const = 0;

    /// Has nothing to copy.
    virtual void assign(const Connection& other);

protected:
    Connection() = default;
    Connection(const Connection&) = default;
    Connection& operator=(const Connection&) = default;
};

}  // namespace orvel::core
