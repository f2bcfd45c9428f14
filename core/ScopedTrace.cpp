#include "core/ScopedTrace.h"

namespace orvel::core::global_logging {

ScopedTrace::ScopedTrace(const Place& place)
    : file(leafName(place.file)),
      function(bareName(place.function)) {
    write(boost::log::trivial::debug, place, "Entering");
}

ScopedTrace::~ScopedTrace() {
    try {
        writePlain(boost::log::trivial::debug, file + " " + function + ": Exiting");
    } catch (...) {
        // A line that can't be written is lost, as everywhere in the log.
        return;
    }
}

}  // namespace orvel::core::global_logging
