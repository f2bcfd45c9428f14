#include "core/Files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <ctime>
#include <filesystem>
#include <system_error>

namespace orvel::core::files {

namespace {

class Descriptor {
public:
    explicit Descriptor(int value) : number(value) {}

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

/// Keeps the two signals that a write can raise from ending the process: a pipe whose reader went
/// away and a file grown past the process's limit. The write itself still fails.
class WriteSignalsHeld {
public:
    WriteSignalsHeld() {
        sigset_t alreadyPending;
        ::sigpending(&alreadyPending);
        ::sigemptyset(&held);
        for (const int signal : {SIGPIPE, SIGXFSZ})
            if (::sigismember(&alreadyPending, signal) == 0) ::sigaddset(&held, signal);
        ::pthread_sigmask(SIG_BLOCK, &held, &before);
    }

    WriteSignalsHeld(const WriteSignalsHeld&) = delete;
    WriteSignalsHeld& operator=(const WriteSignalsHeld&) = delete;

    ~WriteSignalsHeld() {
        const timespec noWait{};
        while (::sigtimedwait(&held, nullptr, &noWait) > 0)
            continue;
        ::pthread_sigmask(SIG_SETMASK, &before, nullptr);
    }

private:
    sigset_t held{};
    sigset_t before{};
};

/// A new, empty file in `folder`, removed again unless it was renamed to its place.
class TemporaryFile {
public:
    TemporaryFile(const std::string& folder, mode_t mode) {
        for (int attempt = 0; attempt < MAX_ATTEMPTS; ++attempt) {
            name = folder + ".tavik-" + std::to_string(::getpid()) + "-" + std::to_string(attempt);
            number = ::open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode);
            error = number < 0 ? errno : 0;
            if (error != EEXIST) return;
        }
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

    /// `errno` of the last step that failed, 0 for none.
    int lastError() const { return error; }

    bool renameTo(const std::string& path) {
        inPlace = ::rename(name.c_str(), path.c_str()) == 0;
        error = inPlace ? 0 : errno;
        return inPlace;
    }

private:
    /// Names are taken only by what a killed process of the same number left behind.
    static constexpr int MAX_ATTEMPTS = 1000;

    std::string name;
    int number = -1;
    int error = 0;
    bool inPlace = false;
};

/// Least growth of the buffer for a file that says less than it holds.
constexpr std::size_t MIN_GROWTH = 4096;

/// A path with a zero byte in it would name another file than it says.
bool isUsable(const std::string& path) {
    return !path.empty() && path.find('\0') == std::string::npos;
}

/// Open for reading, or closed if it is no plain file. Never waits for a pipe's writer.
Descriptor openPlain(const std::string& path, struct stat& state) {
    const int number =
        isUsable(path) ? ::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC) : -1;
    if (number < 0) return Descriptor(-1);
    if (::fstat(number, &state) == 0 && S_ISREG(state.st_mode)) return Descriptor(number);
    ::close(number);
    return Descriptor(-1);
}

/// Reads until `size` bytes are there or the file ends; what it read, or -1.
ssize_t readUpTo(int number, char* bytes, std::size_t size) {
    std::size_t done = 0;
    while (done < size) {
        const ssize_t count = ::read(number, bytes + done, size - done);
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

bool writeAllAt(int number, std::string_view bytes, off_t offset) {
    return ::lseek(number, offset, SEEK_SET) == offset && writeAll(number, bytes);
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

/// The owner as far as this process may give files away. The mode always, but nobody's file runs
/// with another's rights for it.
bool takeOver(int number, const struct stat& old) {
    constexpr auto SAME_USER = static_cast<uid_t>(-1);
    const bool isOwnerKept = ::fchown(number, old.st_uid, old.st_gid) == 0;
    [[maybe_unused]] const bool isGroupKept = ::fchown(number, SAME_USER, old.st_gid) == 0;
    return ::fchmod(number, old.st_mode & (isOwnerKept ? 07777U : 0777U)) == 0;
}

enum class Outcome { WRITTEN, FAILED, FOLDER_CLOSED };

/// A folder without rights, a sticky folder of others, or a file that is a mount point.
bool isFolderClosed(int error) {
    return error == EACCES || error == EPERM || error == EROFS || error == EBUSY;
}

/// `old` is the file that stands at `path`, null if there is none.
Outcome writeBeside(const std::string& path, std::string_view bytes, const struct stat* old) {
    const std::string folder = folderOf(path);
    TemporaryFile file(folder, old == nullptr ? 0666 : 0600);
    if (!file.isOpen())
        return isFolderClosed(file.lastError()) ? Outcome::FOLDER_CLOSED : Outcome::FAILED;
    if (old != nullptr && !takeOver(file.get(), *old)) return Outcome::FAILED;
    if (!writeAll(file.get(), bytes) || !flushToDisk(file.get())) return Outcome::FAILED;
    if (!file.renameTo(path))
        return isFolderClosed(file.lastError()) ? Outcome::FOLDER_CLOSED : Outcome::FAILED;
    flushFolder(folder);
    return Outcome::WRITTEN;
}

/// The first `size` bytes of the plain file. Nothing if they can't be read, or if `path` names
/// another file by now.
std::optional<std::string> readHead(const std::string& path, const struct stat& expected,
                                    std::size_t size) {
    struct stat state {};

    const Descriptor file = openPlain(path, state);
    if (!file.isOpen() || state.st_dev != expected.st_dev || state.st_ino != expected.st_ino)
        return std::nullopt;
    std::string head(size, '\0');
    if (readUpTo(file.get(), head.data(), size) != static_cast<ssize_t>(size)) return std::nullopt;
    return head;
}

/// Writes over the open plain file. What grows it comes first: only growing takes disk space, so
/// a full disk is met before an old byte is touched.
bool overwrite(int number, const std::string& path, std::string_view bytes,
               const struct stat& old) {
    const auto oldSize = static_cast<std::size_t>(old.st_size);
    const std::size_t shared = std::min(oldSize, bytes.size());
    const std::optional<std::string> head = readHead(path, old, shared);
    const bool written = writeAllAt(number, bytes.substr(shared), static_cast<off_t>(shared)) &&
                         writeAllAt(number, bytes.substr(0, shared), 0) &&
                         ::ftruncate(number, static_cast<off_t>(bytes.size())) == 0 &&
                         flushToDisk(number);
    if (written) return true;
    if (head) writeAllAt(number, *head, 0);
    if (::ftruncate(number, old.st_size) == 0) flushToDisk(number);
    return false;
}

/// Writes to what stands at `path` or where the link leads to, without replacing it.
bool writeThrough(const std::string& path, std::string_view bytes) {
    // Without O_NONBLOCK a pipe that nobody reads would wait for its reader.
    constexpr int FLAGS = O_WRONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC;
    int number = ::open(path.c_str(), FLAGS);
    const bool isNew = number < 0 && errno == ENOENT;
    if (isNew) number = ::open(path.c_str(), FLAGS | O_CREAT, 0666);
    const Descriptor file(number);

    struct stat state {};

    if (!file.isOpen() || ::fstat(number, &state) != 0) return false;
    if (!S_ISREG(state.st_mode))
        return ::fcntl(number, F_SETFL, ::fcntl(number, F_GETFL) & ~O_NONBLOCK) == 0 &&
               writeAll(number, bytes) && flushToDisk(number);
    if (overwrite(number, path, bytes, state)) return true;
    if (isNew) {
        std::error_code ignored;
        std::filesystem::remove(std::filesystem::canonical(path, ignored), ignored);
    }
    return false;
}

}  // namespace

std::optional<std::string> read(const std::string& path, std::size_t limit) {
    struct stat state {};

    const Descriptor file = openPlain(path, state);
    if (!file.isOpen() || static_cast<std::size_t>(state.st_size) > limit) return std::nullopt;
    // One byte more than it says shows the end at the first read. Some files say 0 and have more.
    std::string bytes(static_cast<std::size_t>(state.st_size) + 1, '\0');
    std::size_t size = 0;
    while (true) {
        const ssize_t count = readUpTo(file.get(), bytes.data() + size, bytes.size() - size);
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

    return openPlain(path, state).isOpen();
}

bool replace(const std::string& path, std::string_view bytes) {
    if (!isUsable(path)) return false;
    const WriteSignalsHeld held;

    struct stat old {};

    if (::lstat(path.c_str(), &old) != 0)
        return errno == ENOENT && writeBeside(path, bytes, nullptr) == Outcome::WRITTEN;
    if (!S_ISREG(old.st_mode)) return writeThrough(path, bytes);
    // A folder's rights would allow to replace it, but a file that is protected stays.
    if (::faccessat(AT_FDCWD, path.c_str(), W_OK, AT_EACCESS) != 0) return false;
    const Outcome outcome = writeBeside(path, bytes, &old);
    if (outcome == Outcome::FOLDER_CLOSED) return writeThrough(path, bytes);
    return outcome == Outcome::WRITTEN;
}

}  // namespace orvel::core::files
