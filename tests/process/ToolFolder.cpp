#include "tests/process/ToolFolder.h"

#include <fstream>
#include <iterator>
#include <stdexcept>
#include <system_error>

namespace tavik::process {

namespace {

namespace fs = std::filesystem;

const std::string LIBRARY = "libNorvo.SSDFeatures.so.2.0.0";

/// A hard link where the file systems allow it: a program of some megabytes for each test.
void putFile(const fs::path& from, const fs::path& to) {
    std::error_code failure;
    fs::create_hard_link(from, to, failure);
    if (failure) fs::copy_file(from, to);
}

}  // namespace

std::string answer(const std::string& children) {
    return R"(<?xml version="1.0" encoding="utf-8"?><Object category="Job">)"
           R"(<Object category="status"><Property name="Category" value="0"/>)"
           R"(<Property name="Code" value="0"/>)"
           R"(<Property name="Message" value="Completed successfully."/></Object>)" +
           children + "</Object>";
}

ToolFolder::ToolFolder(Place library) {
    putFile(PROCESS_PROGRAM, path("tavik"));
    fs::create_directory(path("opt"));
    fs::create_directory(path("standin"));
    write(CONFIG, DEFAULT_CONFIG);
    const fs::path variant = fs::path(PROCESS_LIBRARIES) / "full" / LIBRARY;
    if (library == Place::INSTALLED) putFile(variant, path("opt/" + LIBRARY));
    if (library == Place::BESIDE_THE_TOOL) putFile(variant, path(LIBRARY));
}

void ToolFolder::write(const std::string& name, const std::string& bytes) const {
    std::ofstream file(path(name), std::ios::binary | std::ios::trunc);
    file << bytes;
    if (!file.flush()) throw std::runtime_error("can't write " + name);
}

std::optional<std::string> ToolFolder::read(const std::string& name) const {
    std::ifstream file(path(name), std::ios::binary);
    if (!file) return std::nullopt;
    return std::string(std::istreambuf_iterator<char>(file), {});
}

std::set<std::string> ToolFolder::installed() const {
    std::set<std::string> names;
    for (const auto& entry : fs::directory_iterator(path("opt")))
        names.insert(entry.path().filename().string());
    return names;
}

testing::Program ToolFolder::tool(const std::vector<std::string>& words) const {
    testing::Program program = other(path("tavik"), words);
    program.name = "tavik";
    return program;
}

testing::Program ToolFolder::other(const std::string& executable,
                                   const std::vector<std::string>& words) const {
    testing::Program program;
    program.executable = executable;
    program.arguments = words;
    program.folder = folder.path();
    return program;
}

testing::Ending ToolFolder::run(const std::vector<std::string>& words) const {
    return testing::run(tool(words));
}

}  // namespace tavik::process
