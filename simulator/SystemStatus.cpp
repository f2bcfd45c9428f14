#include "simulator/SystemStatus.h"

#include <cerrno>
#include <new>
#include <system_error>

namespace orvel::simulator {

core::Status systemError(int error) {
    return {core::status_categories::SYSTEM, error, std::generic_category().message(error) + "."};
}

core::Status statusOf(const std::function<core::Status()>& work) {
    try {
        return work();
    } catch (const core::Status& status) {
        return status;
    } catch (const std::bad_alloc&) {
        return systemError(ENOMEM);
    } catch (...) {
        return systemError(EIO);
    }
}

}  // namespace orvel::simulator
