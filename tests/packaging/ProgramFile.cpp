#include "tests/packaging/ProgramFile.h"

#include "tests/support/ChildProcess.h"

#include <iterator>
#include <sstream>
#include <stdexcept>

namespace tavik::testing {

std::string outputOf(const std::vector<std::string>& words) {
    Program program;
    program.executable = "/usr/bin/env";
    program.arguments = words;
    program.folder = "/";
    const Ending ending = run(program);
    if (ending.exitCode != 0) {
        throw std::runtime_error(words.front() + " failed: " + ending.err + ending.out);
    }
    return ending.out;
}

std::vector<std::string> linesOf(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    return lines;
}

std::vector<std::string> wordsOf(const std::string& line) {
    std::istringstream stream(line);
    return {std::istream_iterator<std::string>(stream), {}};
}

std::vector<std::string> dynamicEntries(const std::string& file, const std::string& kind) {
    const std::string marker = "(" + kind + ")";
    std::vector<std::string> entries;
    for (const std::string& line : linesOf(outputOf({TAVIK_READELF, "-dW", file}))) {
        const auto place = line.find(marker);
        if (place == std::string::npos) continue;
        const auto value = line.find_first_not_of(' ', place + marker.size());
        entries.push_back(value == std::string::npos ? "" : line.substr(value));
    }
    return entries;
}

std::set<std::string> neededLibraries(const std::string& file) {
    std::set<std::string> names;
    for (const std::string& entry : dynamicEntries(file, "NEEDED")) {
        const auto open = entry.find('[');
        const auto close = entry.find(']');
        if (open == std::string::npos || close == std::string::npos) {
            throw std::runtime_error("not a needed library: " + entry);
        }
        names.insert(entry.substr(open + 1, close - open - 1));
    }
    return names;
}

}  // namespace tavik::testing
