#include "tests/golden/GoldenRun.h"

#include "tests/support/ChildProcess.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <fstream>
#include <set>
#include <stdexcept>
#include <string>

namespace tavik::golden {

namespace {

namespace fs = std::filesystem;

const std::string LIBRARY = "libNorvo.SSDFeatures.so.2.0.0";
const std::string CONFIG = "opt/tavik_config.xml";

void writeFile(const fs::path& path, const std::string& bytes) {
    fs::create_directories(path.parent_path());
    std::ofstream file(path, std::ios::binary);
    file << bytes;
    if (!file.flush()) throw std::runtime_error("can't write " + path.string());
}

/// A hard link where the file systems allow it: a program of some megabytes for each run.
void putFile(const fs::path& from, const fs::path& to) {
    std::error_code failure;
    fs::create_hard_link(from, to, failure);
    if (failure) fs::copy_file(from, to);
}

void replaceAll(std::string& text, const std::string& part, const std::string& other) {
    for (std::size_t at = text.find(part); at != std::string::npos;
         at = text.find(part, at + other.size()))
        text.replace(at, part.size(), other);
}

/// The folder that a run works in: the program, its installation folder and the stand-in's orders.
class RunFolder {
public:
    RunFolder(const GoldenCase& golden, const Workshop& workshop) {
        putFile(workshop.program, path("tavik"));
        fs::create_directory(path("opt"));
        for (const auto& [place, variant] : golden.variants) {
            const fs::path library = workshop.variants / variant / LIBRARY;
            if (!fs::exists(library)) throw std::runtime_error("no library variant " + variant);
            const std::string name = place == "opt" ? "opt/" + LIBRARY : LIBRARY;
            putFile(library, path(name));
            given.insert(name);
        }
        if (golden.config) writeFile(path(CONFIG), *golden.config);
        if (golden.isConfigFolder) fs::create_directory(path(CONFIG));
        fs::create_directory(path("standin"));
        for (const auto& [name, bytes] : golden.orders)
            writeFile(path("standin/" + name), bytes);
    }

    fs::path path(const std::string& name) const { return folder.path() / name; }

    /// The files that the run left in the working directory and the installation folder.
    Files newFiles() const {
        Files files = readFiles(folder.path(), given);
        std::erase_if(files, [](const auto& file) { return file.first.starts_with("standin/"); });
        return files;
    }

    /// What the stand-in wrote down; the empty text if it was never called.
    std::string record(const std::string& name) const {
        std::ifstream file(path("standin/" + name), std::ios::binary);
        std::string text{std::istreambuf_iterator<char>(file), {}};
        replaceAll(text, fs::canonical(folder.path()).string(), "{folder}");
        return text;
    }

private:
    testing::TemporaryFolder folder;
    std::set<std::string> given{"tavik", "opt", "standin", CONFIG};
};

testing::Input inputOf(const GoldenCase& golden) {
    using Kind = testing::Input::Kind;
    if (golden.isInputClosed) return {Kind::CLOSED, "", 0};
    if (golden.columns) return {Kind::TERMINAL, golden.input.value_or(""), *golden.columns};
    if (golden.input) return {Kind::BYTES, *golden.input, 0};
    return {Kind::NULL_DEVICE, "", 0};
}

void expectFiles(const Files& expected, const Files& actual) {
    for (const auto& [name, bytes] : expected)
        EXPECT_TRUE(actual.contains(name)) << "the file '" << name << "' was not written";
    for (const auto& [name, bytes] : actual) {
        const auto found = expected.find(name);
        EXPECT_TRUE(found != expected.end()) << "the file '" << name << "' was not expected";
        if (found == expected.end()) continue;
        EXPECT_EQ(found->second, bytes) << "in the file " << name;
    }
}

void expectConfig(const GoldenCase& golden, const fs::path& path) {
    if (golden.isConfigFolder) {
        EXPECT_TRUE(fs::is_directory(path)) << "the folder in the configuration's place";
        return;
    }
    EXPECT_EQ(golden.configAfter.has_value(), fs::exists(path)) << "that there is a configuration";
    if (!golden.configAfter || !fs::exists(path)) return;
    std::ifstream file(path, std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(file), {}};
    EXPECT_EQ(*golden.configAfter, bytes) << "the configuration";
}

void expectOneRun(const GoldenCase& golden, const Workshop& workshop,
                  const std::vector<std::string>& words, const std::string& out) {
    const RunFolder folder(golden, workshop);
    testing::Program program;
    program.executable = folder.path("tavik");
    program.name = "tavik";
    program.arguments = words;
    program.folder = folder.path("");
    program.input = inputOf(golden);
    const testing::Ending ending = testing::run(program);

    EXPECT_EQ(0, ending.signal) << "the signal that ended the program";
    EXPECT_EQ(golden.code, ending.exitCode) << "the exit code";
    EXPECT_EQ(out, ending.out) << "standard output";
    EXPECT_EQ(golden.err, ending.err) << "standard error";
    for (const auto& [name, bytes] : golden.requests)
        EXPECT_EQ(bytes, folder.record(name)) << name;
    EXPECT_EQ(golden.calls.value_or(folder.record("calls")), folder.record("calls"))
        << "the library's calls";
    expectConfig(golden, folder.path(CONFIG));
    expectFiles(golden.files, folder.newFiles());
}

}  // namespace

void expectOutcome(const GoldenCase& golden, const Workshop& workshop) {
    expectOneRun(golden, workshop, golden.words, golden.out);
    for (const auto& [format, out] : golden.outByFormat) {
        SCOPED_TRACE("-output " + format);
        std::vector<std::string> words = golden.words;
        words.insert(words.begin() + 1, {"-output", format});
        expectOneRun(golden, workshop, words, out);
    }
}

}  // namespace tavik::golden
