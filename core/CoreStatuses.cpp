#include "core/CoreStatuses.h"

namespace orvel::core::statuses {

#define STATUS(code, name, text)                                                                   \
    Status name() {                                                                                \
        Status status;                                                                             \
        status.setCategory(status_categories::CORE);                                               \
        status.setCode(code);                                                                      \
        status.setMessage(text);                                                                   \
        return status;                                                                             \
    }
#include "core/CoreStatuses.def"

}  // namespace orvel::core::statuses
