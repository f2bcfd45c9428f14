#include "features/JobInterfaceStatuses.h"

namespace orvel::interfaces::orveli::statuses {

#define STATUS(code, name, text)                                                                   \
    core::Status name() {                                                                          \
        return core::Status(core::status_categories::JOB_INTERFACE, code, text);                   \
    }
#include "features/JobInterfaceStatuses.def"

}  // namespace orvel::interfaces::orveli::statuses
