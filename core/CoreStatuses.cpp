#include "core/CoreStatuses.h"

namespace orvel::core::statuses {

#define STATUS(code, name, text)                                                                   \
    Status name() {                                                                                \
        return Status(status_categories::CORE, code, text);                                        \
    }
#include "core/CoreStatuses.def"

}  // namespace orvel::core::statuses
