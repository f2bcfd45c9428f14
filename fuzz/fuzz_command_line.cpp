// The words of a command line to a result: the input is cut into words at its NUL bytes, or at its
// line ends if it has no NUL. Runs the framework with the real features and a feature library that
// always succeeds and has no payload, so that no line writes a file but the configuration.

#include "fuzz/FuzzSupport.h"
#include "interfaces/cli/cliframework/Framework.h"
#include "tool/NorvoSSDFeature.h"
#include "tool/SystemFeature.h"
#include "tool/ToolConfiguration.h"
#include "tool/VersionFeature.h"

#include <algorithm>
#include <dlfcn.h>
#include <filesystem>
#include <iostream>
#include <iterator>
#include <memory>
#include <streambuf>
#include <string>
#include <string_view>
#include <vector>

namespace {

using cli::framework::Framework;
namespace fuzz = tavik::fuzz;

constexpr int KNOWN_CODES[] = {0, 1, 2, 3, 4, 5, 6, 7, 8, 10, 201};

/// Takes everything, and has nothing to read.
class NoStream : public std::streambuf {
protected:
    int_type overflow(int_type character) override { return traits_type::not_eof(character); }

    std::streamsize xsputn(const char* /*text*/, std::streamsize size) override { return size; }
};

void prepareProcess() {
    static NoStream none;
    std::cin.rdbuf(&none);
    std::clog.rdbuf(&none);

    std::filesystem::create_symlink(FEATURE_LIBRARY,
                                    fuzz::folder() + "libNorvo.SSDFeatures.so.2.0.0");
    // Held open for good, so that a run doesn't load it anew.
    fuzz::require(::dlopen(FEATURE_LIBRARY, RTLD_NOW) != nullptr, "the library can be loaded");
}

std::vector<std::string> wordsOf(std::string_view input) {
    const char separator = input.find('\0') == std::string_view::npos ? '\n' : '\0';
    if (input.ends_with(separator)) input.remove_suffix(1);
    std::vector<std::string> words;
    if (input.empty()) return words;
    while (true) {
        const std::size_t end = input.find(separator);
        words.emplace_back(input.substr(0, end));
        if (end == std::string_view::npos) return words;
        input.remove_prefix(end + 1);
    }
}

/// A line that changed the configuration must not show in the next run.
void restoreConfiguration() {
    static const std::string DEFAULTS = tavik::configuration::readText();
    if (tavik::configuration::readText() == DEFAULTS) return;
    std::filesystem::remove(tavik::configuration::getConfigPath());
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int* /*argc*/, char*** /*argv*/) {
    prepareProcess();
    static_cast<void>(tavik::system::SystemFeature());
    restoreConfiguration();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::cin.clear();
    Framework& framework = Framework::getInstance();
    framework.addFeature("NorvoSSD", std::make_unique<tavik::norvossd::NorvoSSDFeature>());
    framework.addFeature("Version", std::make_unique<cli::version::VersionFeature>());
    framework.addFeature("System", std::make_unique<tavik::system::SystemFeature>());
    framework.programName = "tavik";

    const auto result = framework.execute(wordsOf(fuzz::textOf(data, size)));
    Framework::tearDown();

    fuzz::require(result != nullptr, "every line has a result");
    const auto code = result->getErrorCode();
    fuzz::require(std::find(std::begin(KNOWN_CODES), std::end(KNOWN_CODES), code) !=
                      std::end(KNOWN_CODES),
                  "every line ends with a known code");
    const std::string text = fuzz::render(*result);
    constexpr std::size_t HELP_SIZE = 256UL * 1024;
    constexpr std::size_t GROWTH = 64;
    fuzz::require(text.size() <= HELP_SIZE + GROWTH * size,
                  "the text grows no faster than the line");
    restoreConfiguration();
    return 0;
}
