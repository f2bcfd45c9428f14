#include "core/DeviceFinderExtension.h"

#include <utility>

namespace orvel::core {

DeviceFinderExtension::DeviceFinderExtension(std::string name) : name(std::move(name)) {}

void DeviceFinderExtension::assign(const DeviceFinderExtension& other) {
    productIdentifiers = other.productIdentifiers;
    name = other.name;
}

}  // namespace orvel::core
