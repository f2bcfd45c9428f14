#include "simulator/StoredBytes.h"

namespace orvel::simulator {

StoredBytes::StoredBytes(const core::Payload& payload) : bytes(payload.data(), payload.size()) {}

StoredBytes::StoredBytes(const StoredBytes& other) : bytes(other.copy()) {}

StoredBytes& StoredBytes::operator=(const StoredBytes& other) {
    bytes = other.copy();
    return *this;
}

core::Payload StoredBytes::copy() const {
    return {bytes.data(), bytes.size()};
}

}  // namespace orvel::simulator
