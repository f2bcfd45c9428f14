// A lock between processes.
#pragma once

#include <string>

namespace orvel::simulator {

/// Held by one alone or by several together, whatever processes or objects they are. It goes away
/// with the object, or with the process, however that ends.
class FileLock {
public:
    enum class Missing { MAKE, LEAVE };
    enum class Holders { ONE, SEVERAL };

    /// Holds nothing.
    FileLock() = default;

    /// Waits until nobody else holds the lock on the file, or nobody alone if several may. Holds
    /// nothing if the file can't be opened, or isn't there and can't or shouldn't be made. Its
    /// bytes don't matter.
    FileLock(const std::string& path, Missing missing, Holders holders);

    FileLock(FileLock&& other) noexcept;
    FileLock& operator=(FileLock&& other) noexcept;
    ~FileLock();

    bool isHeld() const { return file >= 0; }

private:
    int file = -1;
};

}  // namespace orvel::simulator
