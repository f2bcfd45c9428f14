#include "core/CommandPath.h"

#include "core/AsyncEngine.h"
#include "core/CoreStatuses.h"

#include <utility>

namespace orvel::core {

CommandPath::CommandPath(std::shared_ptr<Connection> connection, std::string name)
    : connection(std::move(connection)),
      name(std::move(name)) {}

CommandPath::~CommandPath() {
    if (asyncEngine) asyncEngine->stop();
}

void CommandPath::assign(const CommandPath& other) {
    name = other.name;
    timeout = other.timeout;
    connection = other.connection;
    if (other.asyncEngine) setAsyncEngine(other.asyncEngine->clone());
}

Status CommandPath::open() {
    if (!connection) return statuses::invalidArguments();
    return connection->open();
}

Status CommandPath::close() {
    if (!connection) return statuses::noConnectionToClose();
    return connection->close();
}

bool CommandPath::isOpen() const {
    return connection && connection->isOpen();
}

void CommandPath::setAsyncEngine(std::unique_ptr<AsyncEngine> engine) {
    if (asyncEngine) asyncEngine->stop();
    asyncEngine = std::move(engine);
}

}  // namespace orvel::core
