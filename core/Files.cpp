#include "core/Files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <system_error>
#include <utility>

namespace orvel::core::files {

namespace {

class Descriptor {
public:
    explicit Descriptor(int value) : number(value) {}

    Descriptor(Descriptor&& other) noexcept : number(std::exchange(other.number, -1)) {}

    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    ~Descriptor() {
        if (isOpen()) ::close(number);
    }

    bool isOpen() const { return number >= 0; }

    int get() const { return number; }

private:
    int number;
};

enum class Outcome {
    WRITTEN,
    FAILED,
    NOT_REPLACEABLE,  ///< no new file can take the old one's place as it should
    APPEARED,         ///< a file came to be where there was none
};

/// A new, empty file in `folder`, removed again unless it was renamed to its place.
class TemporaryFile {
public:
    TemporaryFile(const std::string& folder, mode_t mode) {
        for (int attempt = 0; attempt < MAX_ATTEMPTS; ++attempt) {
            name = folder + ".tavik-" + std::to_string(::getpid()) + "-" + std::to_string(attempt);
            number = ::open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode);
            if (number >= 0 || errno != EEXIST) return;
        }
    }

    /// The file `path` itself, in place of what an earlier process left there.
    explicit TemporaryFile(std::string path) : name(std::move(path)) {
        if (::unlink(name.c_str()) == 0 || errno == ENOENT)
            number = ::open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    }

    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    ~TemporaryFile() {
        if (!isOpen()) return;
        ::close(number);
        if (!inPlace) ::unlink(name.c_str());
    }

    bool isOpen() const { return number >= 0; }

    int get() const { return number; }

    Outcome takePlaceOf(const std::string& path) {
        inPlace = ::rename(name.c_str(), path.c_str()) == 0;
        return inPlace ? Outcome::WRITTEN : Outcome::NOT_REPLACEABLE;
    }

    /// Never in place of another file, as far as the system can promise that.
    Outcome takeFreePlace(const std::string& path) {
        inPlace =
            ::renameat2(AT_FDCWD, name.c_str(), AT_FDCWD, path.c_str(), RENAME_NOREPLACE) == 0;
        if (inPlace) return Outcome::WRITTEN;
        if (errno == EEXIST) return Outcome::APPEARED;
        return errno == EINVAL || errno == ENOSYS ? takePlaceOf(path) : Outcome::FAILED;
    }

private:
    /// Names are taken only by what a killed process of the same number left behind.
    static constexpr int MAX_ATTEMPTS = 1000;

    std::string name;
    int number = -1;
    bool inPlace = false;
};

/// Least growth of the buffer for a file that says less than it holds.
constexpr std::size_t MIN_GROWTH = 4096;

/// A path with a zero byte in it would name another file than it says.
bool isUsable(const std::string& path) {
    return !path.empty() && path.find('\0') == std::string::npos;
}

/// Never waits for who is at the other end of a pipe, nor takes a terminal over.
constexpr int OPEN_FLAGS = O_NONBLOCK | O_NOCTTY | O_CLOEXEC;

/// Open for `access`, or closed if it is no plain file.
Descriptor openPlain(const std::string& path, int access, struct stat& state) {
    const auto isPlain = [&state](int outcome) { return outcome == 0 && S_ISREG(state.st_mode); };
    // Asked first: to open a device or a pipe for a moment can disturb it.
    if (!isUsable(path) || !isPlain(::stat(path.c_str(), &state))) return Descriptor(-1);
    Descriptor file(::open(path.c_str(), access | OPEN_FLAGS));
    if (!file.isOpen() || !isPlain(::fstat(file.get(), &state))) return Descriptor(-1);
    return file;
}

/// Reads from `offset` until `size` bytes are there or the file ends; what it read, or -1.
ssize_t readUpTo(int number, char* bytes, std::size_t size, std::size_t offset) {
    std::size_t done = 0;
    while (done < size) {
        const ssize_t count =
            ::pread(number, bytes + done, size - done, static_cast<off_t>(offset + done));
        if (count == 0) break;
        if (count > 0)
            done += static_cast<std::size_t>(count);
        else if (errno != EINTR)
            return -1;
    }
    return static_cast<ssize_t>(done);
}

bool writeAll(int number, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t count = ::write(number, bytes.data(), bytes.size());
        if (count > 0)
            bytes.remove_prefix(static_cast<std::size_t>(count));
        else if (count == 0 || errno != EINTR)
            return false;
    }
    return true;
}

bool writeAllAt(int number, std::string_view bytes, std::size_t offset) {
    while (!bytes.empty()) {
        const ssize_t count =
            ::pwrite(number, bytes.data(), bytes.size(), static_cast<off_t>(offset));
        if (count > 0) {
            bytes.remove_prefix(static_cast<std::size_t>(count));
            offset += static_cast<std::size_t>(count);
        } else if (count == 0 || errno != EINTR) {
            return false;
        }
    }
    return true;
}

/// Not every file system knows how to flush; one that doesn't has done what it can.
bool flushToDisk(int number) {
    return ::fsync(number) == 0 || errno == EINVAL || errno == EROFS;
}

std::string folderOf(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    return slash == std::string::npos ? "./" : path.substr(0, slash + 1);
}

/// The rename is done: that the folder can't be flushed does not undo it.
void flushFolder(const std::string& folder) {
    const Descriptor opened(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (opened.isOpen()) ::fsync(opened.get());
}

/// Gives the new file the old one's mode; false if it does not have that, or not its owner. Comes
/// after the last write, which may take mode bits away. Looks at the outcome, since a system may
/// drop bits without a word.
bool takeMode(int number, const struct stat& old) {
    struct stat state {};

    return ::fchmod(number, old.st_mode & 07777U) == 0 && ::fstat(number, &state) == 0 &&
           state.st_mode == old.st_mode && state.st_uid == old.st_uid && state.st_gid == old.st_gid;
}

/// Gives the new file the old one's owner and mode, as far as the system allows that. The mode
/// comes last, since a new owner takes bits of it away.
void takeWhatIsAllowed(int number, const struct stat& old) {
    if (::fchown(number, old.st_uid, old.st_gid) != 0) errno = 0;
    if (::fchmod(number, old.st_mode & 07777U) != 0) errno = 0;
}

/// Puts a new file in the place of `old`, which stands at `path`.
Outcome replacePlain(const std::string& path, std::string_view bytes, const struct stat& old) {
    const std::string folder = folderOf(path);
    TemporaryFile file(folder, 0600);
    // The owner comes first: where it may not be given, there is no need to write at all.
    if (!file.isOpen() || ::fchown(file.get(), old.st_uid, old.st_gid) != 0)
        return Outcome::NOT_REPLACEABLE;
    if (!writeAll(file.get(), bytes)) return Outcome::FAILED;
    if (!takeMode(file.get(), old)) return Outcome::NOT_REPLACEABLE;
    if (!flushToDisk(file.get())) return Outcome::FAILED;
    const Outcome outcome = file.takePlaceOf(path);
    if (outcome == Outcome::WRITTEN) flushFolder(folder);
    return outcome;
}

/// Makes the file `path`, where nothing stands.
Outcome makePlain(const std::string& path, std::string_view bytes) {
    const std::string folder = folderOf(path);
    TemporaryFile file(folder, 0666);
    if (!file.isOpen() || !writeAll(file.get(), bytes) || !flushToDisk(file.get()))
        return Outcome::FAILED;
    const Outcome outcome = file.takeFreePlace(path);
    if (outcome == Outcome::WRITTEN) flushFolder(folder);
    return outcome;
}

/// The first `size` bytes. Nothing if they can't be read.
std::optional<std::string> readStart(int number, std::size_t size) {
    std::string start(size, '\0');
    if (readUpTo(number, start.data(), size, 0) != static_cast<ssize_t>(size)) return std::nullopt;
    return start;
}

/// Up to this size an old file is kept in memory as a whole while it is written over, beyond it
/// only as much as the new bytes cover.
constexpr std::size_t MAX_KEPT_WHOLE = 16UL * 1024 * 1024;

/// Writes over the open plain file. What grows it comes first: mostly only growing takes disk
/// space, so a full disk is met before an old byte is touched. The old end is cut off last, when
/// the new bytes are safely down.
bool overwrite(int number, std::string_view bytes, const struct stat& old) {
    const auto oldSize = static_cast<std::size_t>(old.st_size);
    const std::size_t shared = std::min(oldSize, bytes.size());
    const auto kept = readStart(number, oldSize <= MAX_KEPT_WHOLE ? oldSize : shared);
    const bool isKeptWhole = kept && kept->size() == oldSize;

    const bool isDown = writeAllAt(number, bytes.substr(shared), shared) &&
                        writeAllAt(number, bytes.substr(0, shared), 0) && flushToDisk(number);
    if (isDown && ::ftruncate(number, static_cast<off_t>(bytes.size())) == 0) {
        // An old end that is gone for good leaves the new bytes, all of them, as the outcome.
        if (flushToDisk(number) || !isKeptWhole) return true;
    }
    if (kept) writeAllAt(number, *kept, 0);
    if (::ftruncate(number, old.st_size) == 0) flushToDisk(number);
    return false;
}

/// Makes the file that the link `path` leads to.
bool makeTarget(const std::string& path, std::string_view bytes) {
    struct stat state {};

    const Descriptor file(::open(path.c_str(), O_RDWR | O_CREAT | OPEN_FLAGS, 0666));
    if (!file.isOpen() || ::fstat(file.get(), &state) != 0 || !S_ISREG(state.st_mode)) return false;
    if (overwrite(file.get(), bytes, state)) return true;
    std::error_code ignored;
    if (state.st_size == 0)
        std::filesystem::remove(std::filesystem::canonical(path, ignored), ignored);
    return false;
}

/// Writes to a device or a pipe, waiting for a slow reader but never for the first one.
bool writeToStream(int number, std::string_view bytes) {
    return ::fcntl(number, F_SETFL, ::fcntl(number, F_GETFL) & ~O_NONBLOCK) == 0 &&
           writeAll(number, bytes) && flushToDisk(number);
}

/// Writes to what stands at `path` or where the link leads to, without replacing it.
bool writeThrough(const std::string& path, std::string_view bytes) {
    struct stat state {};

    const Descriptor plain = openPlain(path, O_RDWR, state);
    if (plain.isOpen()) return overwrite(plain.get(), bytes, state);
    const Descriptor other(::open(path.c_str(), O_WRONLY | OPEN_FLAGS));
    if (!other.isOpen()) return errno == ENOENT && makeTarget(path, bytes);
    if (::fstat(other.get(), &state) != 0) return false;
    return S_ISREG(state.st_mode) ? overwrite(other.get(), bytes, state)
                                  : writeToStream(other.get(), bytes);
}

Outcome tryToReplace(const std::string& path, std::string_view bytes) {
    struct stat old {};

    if (::lstat(path.c_str(), &old) != 0)
        return errno == ENOENT ? makePlain(path, bytes) : Outcome::FAILED;
    // A folder's rights would allow to replace it, but a file that is protected stays.
    if (S_ISREG(old.st_mode) && ::faccessat(AT_FDCWD, path.c_str(), W_OK, AT_EACCESS) != 0)
        return Outcome::FAILED;
    Outcome outcome = Outcome::NOT_REPLACEABLE;
    if (S_ISREG(old.st_mode) && old.st_nlink == 1) outcome = replacePlain(path, bytes, old);
    if (outcome != Outcome::NOT_REPLACEABLE) return outcome;
    return writeThrough(path, bytes) ? Outcome::WRITTEN : Outcome::FAILED;
}

}  // namespace

std::optional<std::string> read(const std::string& path, std::size_t limit) {
    struct stat state {};

    const Descriptor file = openPlain(path, O_RDONLY, state);
    if (!file.isOpen() || static_cast<std::size_t>(state.st_size) > limit) return std::nullopt;
    // One byte more than it says shows the end at the first read. Some files say 0 and have more.
    std::string bytes(static_cast<std::size_t>(state.st_size) + 1, '\0');
    std::size_t size = 0;
    while (true) {
        const ssize_t count = readUpTo(file.get(), bytes.data() + size, bytes.size() - size, size);
        if (count < 0) return std::nullopt;
        size += static_cast<std::size_t>(count);
        if (size > limit) return std::nullopt;
        if (size < bytes.size()) break;
        bytes.resize(2 * bytes.size() + MIN_GROWTH);
    }
    bytes.resize(size);
    return bytes;
}

bool isReadable(const std::string& path) {
    struct stat state {};

    return openPlain(path, O_RDONLY, state).isOpen();
}

std::string resolve(const std::string& path) {
    struct stat state {};

    if (!isUsable(path) || ::lstat(path.c_str(), &state) != 0 || !S_ISLNK(state.st_mode) ||
        ::stat(path.c_str(), &state) != 0 || !S_ISREG(state.st_mode))
        return path;
    std::error_code error;
    const std::filesystem::path target = std::filesystem::canonical(path, error);
    return error ? path : target.string();
}

bool replace(const std::string& path, std::string_view bytes) {
    if (!isUsable(path)) return false;
    Outcome outcome = tryToReplace(path, bytes);
    if (outcome == Outcome::APPEARED) outcome = tryToReplace(path, bytes);
    return outcome == Outcome::WRITTEN;
}

bool replaceByRename(const std::string& path, std::string_view bytes) {
    if (!isUsable(path)) return false;

    struct stat old {};

    const bool isThere = ::lstat(path.c_str(), &old) == 0;
    if (!isThere && errno != ENOENT) return false;
    if (isThere && !S_ISREG(old.st_mode)) return false;
    if (isThere && ::faccessat(AT_FDCWD, path.c_str(), W_OK, AT_EACCESS) != 0) return false;

    const std::string folder = folderOf(path);
    TemporaryFile file(folder + "." + std::filesystem::path(path).filename().string() + ".new");
    if (!file.isOpen()) return false;
    if (!writeAll(file.get(), bytes)) return false;
    if (isThere) takeWhatIsAllowed(file.get(), old);
    if (!flushToDisk(file.get()) || file.takePlaceOf(path) != Outcome::WRITTEN) return false;
    flushFolder(folder);
    return true;
}

}  // namespace orvel::core::files
