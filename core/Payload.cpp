#include "core/Payload.h"

#include "core/CoreStatuses.h"
#include "core/Memory.h"

#include <algorithm>
#include <limits>
#include <stdexcept>

namespace orvel::core {

Payload::BufferImplementation::BufferImplementation(std::uint32_t size)
    : data(size > 0 ? std::make_unique<std::uint8_t[]>(size) : nullptr),
      size(size) {}

// All empty payloads may share one buffer: there is no byte in it to change, and `append` puts a
// new buffer into its handle.
Payload::Payload() {
    static const auto EMPTY = std::make_shared<BufferImplementation>();
    buffer = EMPTY;
}

Payload::Payload(std::uint32_t size) : buffer(std::make_shared<BufferImplementation>(size)) {}

Payload::Payload(const void* bytes, std::uint32_t size) : Payload(size) {
    memCopy(data(), size, bytes, size);
}

std::uint8_t* Payload::data() const {
    return buffer->data.get();
}

std::uint32_t Payload::size() const {
    return buffer->size;
}

std::uint8_t* Payload::at(std::uint32_t index) const {
    if (index >= size()) throw statuses::requestOutOfBounds();
    return data() + index;
}

void Payload::clear() {
    std::fill_n(data(), size(), std::uint8_t{0});
}

bool Payload::operator==(const Payload& other) const {
    return size() == other.size() && std::equal(data(), data() + size(), other.data());
}

bool Payload::copyFrom(const Payload& source) {
    memCopy(data(), size(), source.data(), std::min(source.size(), size()));
    return source.size() <= size();
}

void Payload::append(const void* bytes, std::uint32_t size) {
    const auto old = buffer;
    if (size > std::numeric_limits<std::uint32_t>::max() - old->size) {
        throw std::length_error("payload too large");
    }
    buffer = std::make_shared<BufferImplementation>(old->size + size);
    memCopy(buffer->data.get(), buffer->size, old->data.get(), old->size);
    if (size > 0) {
        memCopy(buffer->data.get() + old->size, buffer->size - old->size, bytes, size);
    }
}

void Payload::append(const Payload& other) {
    // Holds the bytes for the case that `other` is this handle.
    const auto source = other.buffer;
    append(source->data.get(), source->size);
}

}  // namespace orvel::core
