#include "tests/core/FileFaults.h"

#include <fcntl.h>
#include <sys/syscall.h>
#include <sys/types.h>
#include <unistd.h>

#include <cerrno>
#include <cstdarg>
#include <utility>

namespace tavik::testing {

namespace {

struct Current {
    FileCall call;
    FileFault::Step step;
    int calls = 0;
};

std::optional<Current>& current() {
    static std::optional<Current> instance;
    return instance;
}

std::optional<int> stepIn(FileCall call) {
    if (!current() || current()->call != call) return std::nullopt;
    return current()->step(current()->calls++);
}

/// The system call, unless the test has other plans.
template <typename... Arguments>
long carryOut(FileCall call, long number, Arguments... arguments) {
    const std::optional<int> instead = stepIn(call);
    if (!instead) return ::syscall(number, arguments...);
    if (*instead == 0) return 0;
    errno = *instead;
    return -1;
}

}  // namespace

FileFault::FileFault(FileCall call, Step step) {
    current() = Current{call, std::move(step)};
}

FileFault::FileFault(FileCall call, int error, int good)
    : FileFault(call, [error, good](int before) {
          return before < good ? std::nullopt : std::optional<int>(error);
      }) {}

FileFault::~FileFault() {
    current().reset();
}

int FileFault::calls() const {
    return current()->calls;
}

// Defined here, the functions go before those of the C library. The labels give them their names
// without the checks that its headers attach to them.
extern "C" {

int testOpen(const char* path, int flags, ...) __asm__("open");
ssize_t testPwrite(int file, const void* bytes, size_t size, off_t offset) __asm__("pwrite");
int testFsync(int file) __asm__("fsync");
int testFtruncate(int file, off_t size) __asm__("ftruncate");
int testFchown(int file, uid_t user, gid_t group) __asm__("fchown");
int testFchmod(int file, mode_t mode) __asm__("fchmod");
int testRename(const char* from, const char* to) __asm__("rename");
int testRenameat2(int fromFolder, const char* from, int toFolder, const char* to,
                  unsigned flags) __asm__("renameat2");

int testOpen(const char* path, int flags, ...) {
    std::va_list rest;
    va_start(rest, flags);
    const mode_t mode = (flags & O_CREAT) != 0 ? va_arg(rest, mode_t) : 0;
    va_end(rest);
    if ((flags & O_EXCL) == 0)
        return static_cast<int>(::syscall(SYS_openat, AT_FDCWD, path, flags, mode));
    return static_cast<int>(carryOut(FileCall::MAKE_NEW, SYS_openat, AT_FDCWD, path, flags, mode));
}

ssize_t testPwrite(int file, const void* bytes, size_t size, off_t offset) {
    return carryOut(FileCall::WRITE_AT, SYS_pwrite64, file, bytes, size, offset);
}

int testFsync(int file) {
    return static_cast<int>(carryOut(FileCall::FLUSH, SYS_fsync, file));
}

int testFtruncate(int file, off_t size) {
    return static_cast<int>(carryOut(FileCall::CUT, SYS_ftruncate, file, size));
}

int testFchown(int file, uid_t user, gid_t group) {
    return static_cast<int>(carryOut(FileCall::GIVE_OWNER, SYS_fchown, file, user, group));
}

int testFchmod(int file, mode_t mode) {
    return static_cast<int>(carryOut(FileCall::GIVE_MODE, SYS_fchmod, file, mode));
}

int testRename(const char* from, const char* to) {
    return static_cast<int>(
        carryOut(FileCall::RENAME, SYS_renameat2, AT_FDCWD, from, AT_FDCWD, to, 0U));
}

int testRenameat2(int fromFolder, const char* from, int toFolder, const char* to, unsigned flags) {
    return static_cast<int>(
        carryOut(FileCall::RENAME_NEW, SYS_renameat2, fromFolder, from, toFolder, to, flags));
}

}  // extern "C"

}  // namespace tavik::testing
