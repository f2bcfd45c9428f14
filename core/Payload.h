// The byte buffer: data that goes to a device or comes back from it.
#pragma once

#include <cstdint>
#include <memory>

namespace orvel::core {

/// A handle: copies share one buffer and the last handle frees it. The count of handles is
/// atomic; the bytes are not guarded.
class Payload {
public:
    /// An empty buffer: `data` null, `size` 0.
    Payload();

    /// A zero-filled buffer of `size` bytes. Throws std::bad_alloc.
    explicit Payload(std::uint32_t size);

    /// A copy of `size` bytes at `bytes`.
    Payload(const void* bytes, std::uint32_t size);

    // Declared, so that there is no move: no handle is ever without a buffer.
    Payload(const Payload&) = default;
    Payload& operator=(const Payload&) = default;
    ~Payload() = default;

    std::uint8_t* data() const;
    std::uint32_t size() const;

    /// Address of one byte. Throws core::Status by value, code 14, for an index out of range.
    std::uint8_t* at(std::uint32_t index) const;

    std::uint8_t* operator[](std::uint32_t index) const { return at(index); }

    /// Fills the buffer with zeroes; the size stays.
    void clear();

    /// Equal sizes and equal bytes.
    bool operator==(const Payload& other) const;

    /// Copies `source` over the front of this buffer. False if it did not fit, in which case this
    /// buffer is filled and its size stays.
    bool copyFrom(const Payload& source);

    /// Puts a new, longer buffer into this handle; handles that shared the old one keep it.
    /// Throws std::length_error if the size would not fit 32 bits.
    void append(const void* bytes, std::uint32_t size);
    void append(const Payload& other);

private:
    struct BufferImplementation {
        BufferImplementation() = default;
        explicit BufferImplementation(std::uint32_t size);

        std::unique_ptr<std::uint8_t[]> data;  ///< null for an empty payload
        std::uint32_t size = 0;
    };

    std::shared_ptr<BufferImplementation> buffer;  ///< never null
};

}  // namespace orvel::core
