#include "core/DeviceFinder.h"

#include <utility>

namespace orvel::core {

DeviceFinder::DeviceFinder(std::string name) : name(std::move(name)) {}

void DeviceFinder::assign(const DeviceFinder& other) {
    productIdentifiers = other.productIdentifiers;
    name = other.name;
}

}  // namespace orvel::core
