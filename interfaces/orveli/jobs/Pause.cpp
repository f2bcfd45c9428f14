#include "interfaces/orveli/jobs/Pause.h"

#include <thread>

namespace orvel::interfaces::orveli::jobs {

void sleepFor(std::chrono::milliseconds time) {
    std::this_thread::sleep_for(time);
}

}  // namespace orvel::interfaces::orveli::jobs
