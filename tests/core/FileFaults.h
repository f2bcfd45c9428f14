// A file system that fails on demand: a test steps in before chosen calls of the C library.
#pragma once

#include <functional>
#include <optional>

namespace tavik::testing {

enum class FileCall {
    MAKE_NEW,    // open of a file that must not exist yet
    WRITE_AT,    // pwrite
    FLUSH,       // fsync
    CUT,         // ftruncate
    GIVE_OWNER,  // fchown
    GIVE_MODE,   // fchmod
    RENAME,      // rename
    RENAME_NEW,  // renameat2
};

/// Steps in before each call of one kind in this process for as long as it lives. One at a time.
class FileFault {
public:
    /// What happens instead of a call: an `errno` to fail with, 0 to claim success, nothing to
    /// let the call through. Gets the number of calls of the kind before this one.
    using Step = std::function<std::optional<int>(int)>;

    FileFault(FileCall call, Step step);

    /// Lets `good` calls through and fails all further ones.
    FileFault(FileCall call, int error, int good = 0);

    FileFault(const FileFault&) = delete;
    FileFault& operator=(const FileFault&) = delete;

    ~FileFault();

    int calls() const;
};

}  // namespace tavik::testing
