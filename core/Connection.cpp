#include "core/Connection.h"

namespace orvel::core {

void Connection::assign(const Connection& /*other*/) {}

}  // namespace orvel::core
