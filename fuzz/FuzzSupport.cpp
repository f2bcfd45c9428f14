#include "fuzz/FuzzSupport.h"

#include "tool/Installation.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <unistd.h>

namespace tavik::installation {

std::string path(const std::string& name) {
    return fuzz::folder() + name;
}

}  // namespace tavik::installation

namespace tavik::fuzz {

namespace {

class OwnFolder {
public:
    OwnFolder() {
        // Every file that the tool writes is flushed to disk, which is slow on a real one.
        const char* const inMemory = "/dev/shm";
        const bool isUsable = ::access(inMemory, W_OK | X_OK) == 0;
        const auto parent = isUsable ? inMemory : std::filesystem::temp_directory_path();
        std::string name = (parent / "tavik-fuzz-XXXXXX").string();
        require(::mkdtemp(name.data()) != nullptr, "a folder can be made");
        path = name + '/';
    }

    OwnFolder(const OwnFolder&) = delete;
    OwnFolder& operator=(const OwnFolder&) = delete;

    ~OwnFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path, ignored);
    }

    std::string path;
};

}  // namespace

const std::string& folder() {
    static const OwnFolder own;
    return own.path;
}

void require(bool holds, const char* law) {
    if (holds) return;
    std::fprintf(stderr, "broken law: %s\n", law);
    std::abort();
}

std::string_view textOf(const std::uint8_t* data, std::size_t size) {
    return {reinterpret_cast<const char*>(data), size};
}

std::string render(cli::framework::ResultBase& result) {
    using cli::framework::OutputType;

    result.setOutputType(OutputType::text);
    std::string text = result.output();
    for (const auto type : {OutputType::nvmxml, OutputType::esx, OutputType::textTable,
                            OutputType::json, OutputType::csv}) {
        result.setOutputType(type);
        static_cast<void>(result.output());
    }
    constexpr auto NO_TYPE = static_cast<OutputType>(6);
    result.setOutputType(NO_TYPE);
    require(result.output().empty(), "a number that is no output type renders as nothing");
    result.setOutputType(OutputType::text);
    require(result.output() == text, "a rendering leaves nothing behind for the next one");
    return text;
}

}  // namespace tavik::fuzz
