#include "connections/linux/connection_dll_linux/Connection.h"

#include "core/GlobalLogging.h"

#include <dlfcn.h>

#include <cerrno>
#include <utility>

namespace orvel::connections::dll {

namespace {

namespace logging = core::global_logging;
using logging::severity_level;

core::Status systemError(int code) {
    return {core::status_categories::SYSTEM, code, "System error."};
}

}  // namespace

Connection::Connection(std::string path) : common::dll::Connection(std::move(path)) {}

Connection::~Connection() {
    [[maybe_unused]] const core::Status dropped = Connection::close();
}

core::Status Connection::open() {
    if (isOpen()) {
        logging::write(severity_level::debug, ORVEL_HERE, "Connection already opened for " + path);
        return {};
    }
    // A library may leave threads and exit handlers behind: its code has to outlive `close`.
    handle = ::dlopen(path.c_str(), RTLD_LAZY | RTLD_NODELETE);
    if (handle == nullptr) {
        // The loader sets `errno` for some failures only, and anything further may change it.
        core::Status failure = systemError(errno);
        const char* reason = ::dlerror();
        logging::write(severity_level::error, ORVEL_HERE,
                       "Unable to load " + path +
                           ". System error: " + (reason == nullptr ? "" : reason));
        return failure;
    }
    logging::write(severity_level::debug, ORVEL_HERE, "Opened connection to " + path);
    return {};
}

core::Status Connection::close() {
    core::Status status;
    if (handle == nullptr) return status;
    if (::dlclose(handle) != 0) status = systemError(errno);
    handle = nullptr;
    return status;
}

bool Connection::isOpen() {
    if (handle != nullptr) return true;
    logging::write(severity_level::debug, ORVEL_HERE, "Handle is NULL. Connection must be closed.");
    return false;
}

std::unique_ptr<core::Connection> Connection::clone() const {
    auto copy = std::make_unique<Connection>(std::string());
    copy->assign(*this);
    return copy;
}

void* Connection::loadFunction(const std::string& name) {
    ::dlerror();
    void* address = ::dlsym(handle, name.c_str());
    // A symbol may have the value 0: only the loader's words tell that it is missing.
    const char* reason = ::dlerror();
    if (reason == nullptr) return address;
    logging::write(severity_level::error, ORVEL_HERE,
                   "Failed to load " + name + ". OS error: " + reason);
    return nullptr;
}

void Connection::assign(const Connection& other) {
    common::dll::Connection::assign(other);
}

}  // namespace orvel::connections::dll
