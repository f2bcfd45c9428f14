#include "connections/common/dll/Connection.h"

#include <utility>

namespace orvel::connections::common::dll {

Connection::Connection(std::string path) : path(std::move(path)) {}

void Connection::assign(const Connection& other) {
    path = other.path;
    core::Connection::assign(other);
}

}  // namespace orvel::connections::common::dll
