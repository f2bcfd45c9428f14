// Loaded before a program's other libraries, writes down the path of each file that the program or
// its libraries open: a line each, to the end of the file that `OPENED_FILES` names. It sees the
// calls of libraries to the C library, not those that the C library makes of itself.
#include <dlfcn.h>
#include <fcntl.h>
#include <unistd.h>

#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <string>

#define EXPORTED extern "C" __attribute__((visibility("default")))

namespace {

template <class Function>
Function next(const char* name) {
    return reinterpret_cast<Function>(::dlsym(RTLD_NEXT, name));
}

void record(const char* path) {
    const char* list = std::getenv("OPENED_FILES");
    if (list == nullptr || path == nullptr) return;
    const auto open = next<int (*)(const char*, int, ...)>("open");
    const int file = open(list, O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600);
    if (file < 0) return;
    const std::string line = std::string(path) + "\n";
    if (::write(file, line.data(), line.size()) < 0) std::abort();
    ::close(file);
}

/// The mode that stands behind the flags where a file may be made.
mode_t modeOf(int flags, std::va_list& rest) {
    const bool makes = (flags & O_CREAT) != 0 || (flags & O_TMPFILE) == O_TMPFILE;
    return makes ? static_cast<mode_t>(va_arg(rest, int)) : 0;
}

}  // namespace

#define DEFINE_OPEN(name)                                                                          \
    EXPORTED int name(const char* path, int flags, ...);                                           \
    int name(const char* path, int flags, ...) {                                                   \
        std::va_list rest;                                                                         \
        va_start(rest, flags);                                                                     \
        const mode_t mode = modeOf(flags, rest);                                                   \
        va_end(rest);                                                                              \
        record(path);                                                                              \
        return next<int (*)(const char*, int, ...)>(#name)(path, flags, mode);                     \
    }

#define DEFINE_OPENAT(name)                                                                        \
    EXPORTED int name(int folder, const char* path, int flags, ...);                               \
    int name(int folder, const char* path, int flags, ...) {                                       \
        std::va_list rest;                                                                         \
        va_start(rest, flags);                                                                     \
        const mode_t mode = modeOf(flags, rest);                                                   \
        va_end(rest);                                                                              \
        record(path);                                                                              \
        return next<int (*)(int, const char*, int, ...)>(#name)(folder, path, flags, mode);        \
    }

#define DEFINE_FOPEN(name)                                                                         \
    EXPORTED std::FILE* name(const char* path, const char* mode);                                  \
    std::FILE* name(const char* path, const char* mode) {                                          \
        record(path);                                                                              \
        return next<std::FILE* (*)(const char*, const char*)>(#name)(path, mode);                  \
    }

DEFINE_OPEN(open)
DEFINE_OPEN(open64)
DEFINE_OPENAT(openat)
DEFINE_OPENAT(openat64)
DEFINE_FOPEN(fopen)
DEFINE_FOPEN(fopen64)
