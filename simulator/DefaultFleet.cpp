#include "simulator/DefaultFleet.h"

namespace orvel::simulator {

std::string_view defaultFleet() {
    return "{}";
}

}  // namespace orvel::simulator
