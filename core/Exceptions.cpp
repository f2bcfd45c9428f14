#include "core/Exceptions.h"

#include <cerrno>
#include <exception>

namespace orvel::core {

Status statusOfCurrentException() {
    try {
        throw;
    } catch (const Status& status) {
        return status;
    } catch (const std::exception& exception) {
        return {status_categories::SYSTEM, EIO, exception.what()};
    } catch (...) {
        return {status_categories::SYSTEM, EIO, "System error."};
    }
}

}  // namespace orvel::core
