#include "simulator/FileLock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <utility>

namespace orvel::simulator {

namespace {

/// Never waits for who is at the other end of a pipe, and stays in this process.
constexpr int FLAGS = O_NONBLOCK | O_NOCTTY | O_CLOEXEC;

int openFile(const std::string& path, FileLock::Missing missing) {
    constexpr mode_t FOR_ALL = 0666;
    if (missing == FileLock::Missing::MAKE) {
        const int made = ::open(path.c_str(), O_RDWR | O_CREAT | FLAGS, FOR_ALL);
        if (made >= 0) return made;
    }
    return ::open(path.c_str(), O_RDONLY | FLAGS);
}

bool waitForLock(int file, FileLock::Holders holders) {
    const int kind = holders == FileLock::Holders::ONE ? LOCK_EX : LOCK_SH;
    while (::flock(file, kind) != 0) {
        if (errno != EINTR) return false;
    }
    return true;
}

/// Whether others who come by the path find this file, and no other in its place.
bool standsAt(const std::string& path, int file) {
    struct stat own {};

    struct stat there {};

    return ::fstat(file, &own) == 0 && ::stat(path.c_str(), &there) == 0 &&
           own.st_dev == there.st_dev && own.st_ino == there.st_ino;
}

}  // namespace

FileLock::FileLock(const std::string& path, Missing missing, Holders holders) {
    while (true) {
        const int opened = openFile(path, missing);
        if (opened < 0) return;
        const bool isLocked = waitForLock(opened, holders);
        if (isLocked && standsAt(path, opened)) {
            file = opened;
            return;
        }
        ::close(opened);
        // Somebody may have replaced or removed the file in the meantime.
        if (!isLocked) return;
    }
}

FileLock::FileLock(FileLock&& other) noexcept : file(std::exchange(other.file, -1)) {}

FileLock& FileLock::operator=(FileLock&& other) noexcept {
    std::swap(file, other.file);
    return *this;
}

FileLock::~FileLock() {
    if (isHeld()) ::close(file);
}

}  // namespace orvel::simulator
