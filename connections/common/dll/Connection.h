// A connection to a shared library reached by name, on any platform.
#pragma once

#include "core/Connection.h"

#include <string>

namespace orvel::connections::common::dll {

class Connection : public core::Connection {
public:
    /// The address of an exported function, null on failure.
    virtual void* loadFunction(const std::string& name) = 0;

    /// Copies the path; the handle is not shared.
    virtual void assign(const Connection& other);
    using core::Connection::assign;

    const std::string& getPath() const { return path; }

protected:
    explicit Connection(std::string path);

    void* handle = nullptr;  ///< the loader's handle; null while closed
    std::string path;
};

}  // namespace orvel::connections::common::dll
