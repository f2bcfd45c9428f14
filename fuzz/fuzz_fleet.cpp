// The text of a fleet of simulated drives to its records and back.

#include "fuzz/FuzzSupport.h"
#include "simulator/FleetText.h"

#include <string>
#include <string_view>

namespace {

namespace fuzz = tavik::fuzz;
using orvel::simulator::Fleet;
using orvel::simulator::FleetTextError;
using orvel::simulator::readFleet;
using orvel::simulator::Unmentioned;
using orvel::simulator::writeFleet;

void checkMessage(std::string_view message) {
    constexpr std::size_t LONGEST = 10000;
    fuzz::require(!message.empty(), "a text that is refused has a reason");
    fuzz::require(message.size() < LONGEST, "a reason can be read");
    for (const char character : message)
        fuzz::require(character >= ' ' && character <= '~', "a reason is one line");
}

void checkTrip(const Fleet& fleet) {
    const std::string text = writeFleet(fleet);
    const Fleet again = readFleet(text, Unmentioned::BLANK);
    fuzz::require(again == fleet, "what was read comes back from its own text");
    fuzz::require(writeFleet(again) == text, "the second text is that of the first trip");
}

void check(std::string_view text, Unmentioned unmentioned) {
    Fleet fleet;
    try {
        fleet = readFleet(text, unmentioned);
    } catch (const FleetTextError& error) {
        checkMessage(error.what());
        return;
    }
    checkTrip(fleet);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text = fuzz::textOf(data, size);
    check(text, Unmentioned::TYPICAL);
    check(text, Unmentioned::BLANK);
    return 0;
}
