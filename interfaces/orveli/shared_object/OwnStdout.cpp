// A `stdout` of the shared object's own. The static Boost.Log is built for programs and reaches for
// the C library's variable as only a program can; a hidden one in the same file is within reach.
// Boost.Log looks at it where a record meets no sink at all, which the tool-kit's log never lets
// happen.
#include <dlfcn.h>

#include <cstdio>

#undef stdout

extern "C" {

__attribute__((visibility("hidden"))) std::FILE* stdout = nullptr;

}  // extern "C"

namespace {

constexpr int BEFORE_ALL_OTHERS = 101;

/// Leads to the C library's stream before the C++ streams of this shared object take it over.
__attribute__((constructor(BEFORE_ALL_OTHERS))) void findStdout() {
    if (const void* theirs = ::dlsym(RTLD_DEFAULT, "stdout"))
        ::stdout = *static_cast<std::FILE* const*>(theirs);
}

}  // namespace
