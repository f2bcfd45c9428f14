#include "tests/transcripts/Transcript.h"

#include <sstream>
#include <string_view>

namespace tavik::transcripts {

namespace {

constexpr std::string_view TYPED = "$ ";
constexpr std::string_view ERROR_LINE = "2> ";
constexpr std::string_view OPENING = "```console";
constexpr std::string_view CLOSING = "```";

/// Whether the line is such as "[3]".
bool isExitCode(const std::string& line) {
    return line.size() > 2 && line.front() == '[' && line.back() == ']' &&
           line.find_first_not_of("0123456789", 1) == line.size() - 1;
}

void take(Step& step, const std::string& line) {
    if (line.starts_with(ERROR_LINE)) {
        step.err += line.substr(ERROR_LINE.size()) + "\n";
    } else if (isExitCode(line)) {
        step.code = std::stoi(line.substr(1));
    } else {
        step.out += line + "\n";
    }
}

std::string prefixed(const std::string& lines) {
    std::istringstream stream(lines);
    std::string text;
    for (std::string line; std::getline(stream, line);)
        text += std::string(ERROR_LINE) + line + "\n";
    return text;
}

}  // namespace

std::vector<Step> readTranscript(const std::string& text) {
    std::vector<Step> steps;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) {
        if (line.starts_with(TYPED)) {
            steps.push_back({line.substr(TYPED.size()), "", "", 0});
        } else if (!steps.empty()) {
            take(steps.back(), line);
        }
    }
    return steps;
}

std::string transcriptOfPage(const std::string& markdown) {
    std::istringstream stream(markdown);
    std::string text;
    bool isInside = false;
    for (std::string line; std::getline(stream, line);) {
        if (line == OPENING || line == CLOSING) {
            isInside = line == OPENING;
        } else if (isInside) {
            text += line + "\n";
        }
    }
    return text;
}

std::string writeTranscript(const std::vector<Step>& steps) {
    std::string text;
    for (const Step& step : steps) {
        text += std::string(TYPED) + step.command + "\n" + step.out + prefixed(step.err);
        if (step.code != 0) text += "[" + std::to_string(step.code) + "]\n";
    }
    return text;
}

}  // namespace tavik::transcripts
