#include "features/FeatureStatuses.h"

namespace orvel::features::statuses {

#define STATUS(code, name, text)                                                                   \
    core::Status name() {                                                                          \
        return core::Status(core::status_categories::FEATURES, code, text);                        \
    }
#include "features/FeatureStatuses.def"

}  // namespace orvel::features::statuses
