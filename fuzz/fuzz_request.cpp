// The text of a request to what the feature library with simulated drives answers.
//
// Each input meets the default fleet, whose time passes as fast as it can.

#include "core/XmlConverter.h"
#include "core/xml/XmlObject.h"
#include "fuzz/FuzzSupport.h"
#include "interfaces/orveli/shared_object/SimulatedLibrary.h"
#include "simulator/DefaultFleet.h"

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string>

namespace {

namespace fuzz = tavik::fuzz;
namespace xml = orvel::core::xml;
using orvel::interfaces::orveli::shared_object::SimulatedLibrary;

/// A folder with the description of the fleet. Nobody is to wait for a self-test.
std::string makeDrives() {
    std::string folder = fuzz::folder() + "drives";
    std::filesystem::create_directory(folder);
    std::string fleet(orvel::simulator::defaultFleet());
    fleet.insert(fleet.find('{') + 1, R"("timeFactor": 10000,)");
    std::ofstream(folder + "/fleet.json") << fleet;
    return folder;
}

/// One for all inputs: a library is made to answer one request after another.
SimulatedLibrary& library() {
    static SimulatedLibrary one(makeDrives(), fuzz::folder() + "FirmwareModules");
    return one;
}

std::string fetch(std::uint64_t handle) {
    std::uint32_t size = 0;
    fuzz::require(library().receive(handle, nullptr, &size) == 8, "an answer has a size");
    std::string answer(size, ' ');
    fuzz::require(library().receive(handle, answer.data(), &size) == 0, "an answer is fetched");
    fuzz::require(library().receive(handle, answer.data(), &size) == 1,
                  "an answer is fetched but once");
    return answer;
}

/// The first child of category "status", which each answer has.
const xml::XmlObject* statusOf(const xml::XmlObject& answer) {
    for (const auto& child : answer.getObjects()) {
        if (child->getAttribute("category") == "status") return child.get();
    }
    return nullptr;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    // What an input has changed must not be there for the next one.
    std::filesystem::remove(fuzz::folder() + "drives/state.json");
    const std::string answer = fetch(library().send(std::string(fuzz::textOf(data, size))));
    const auto element = orvel::core::XmlConverter::toXml(answer);
    const auto* object = dynamic_cast<const xml::XmlObject*>(element.get());
    fuzz::require(object != nullptr, "an answer is an object");
    const xml::XmlObject* status = object == nullptr ? nullptr : statusOf(*object);
    fuzz::require(status != nullptr && status->getProperties().size() == 3,
                  "an answer has a status of three properties");
    return 0;
}
