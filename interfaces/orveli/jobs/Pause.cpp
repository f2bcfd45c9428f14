#include "interfaces/orveli/jobs/Pause.h"

#include <thread>

namespace orvel::interfaces::orveli::jobs {

void sleepFor(std::chrono::milliseconds time) {
    // A drive doesn't call back when a self-test or an erase is over: all one can do is look again.
    std::this_thread::sleep_for(time);
}

}  // namespace orvel::interfaces::orveli::jobs
