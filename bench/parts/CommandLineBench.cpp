// From the words of a line to the command that it means, over the tool's whole vocabulary.
#include "interfaces/cli/cliframework/Framework.h"
#include "interfaces/cli/cliframework/Lexer.h"
#include "interfaces/cli/cliframework/Parser.h"
#include "tool/NorvoSSDFeature.h"
#include "tool/SystemFeature.h"
#include "tool/VersionFeature.h"

#include <benchmark/benchmark.h>

#include <iterator>
#include <memory>
#include <string>
#include <vector>

namespace {

using cli::framework::CommandPart;
using cli::framework::CommandRef;
using cli::framework::Framework;
using cli::framework::Lexer;
using cli::framework::Parser;

const char* const LINE[] = {"set",         "-output",  "json",          "-force",
                            "-norvossd",   "1",        "-namespace",    "2",
                            "LBAFormat=3", "Force=no", "WriteCache=on", "PhySpeed=6"};
const char* const SHORT_LINE[] = {"show", "-norvossd"};
constexpr int LINE_LENGTH = static_cast<int>(std::size(LINE));
constexpr int SHORT_LINE_LENGTH = static_cast<int>(std::size(SHORT_LINE));

/// The framework with the features of the tool, for as long as one benchmark runs.
class ToolFramework {
public:
    ToolFramework() : framework(Framework::getInstance()) {
        framework.addFeature("NorvoSSD", std::make_unique<tavik::norvossd::NorvoSSDFeature>());
        framework.addFeature("Version", std::make_unique<cli::version::VersionFeature>());
        framework.addFeature("System", std::make_unique<tavik::system::SystemFeature>());
    }

    ToolFramework(const ToolFramework&) = delete;
    ToolFramework& operator=(const ToolFramework&) = delete;

    ~ToolFramework() { Framework::tearDown(); }

    Framework& operator*() const { return framework; }

    Framework* operator->() const { return &framework; }

private:
    Framework& framework;
};

void addNames(const std::vector<CommandPart>& parts, std::vector<std::string>& names) {
    for (const CommandPart& part : parts)
        names.push_back(part.name);
}

Lexer lexerOf(const std::vector<CommandRef>& commands) {
    std::vector<std::string> verbs;
    std::vector<std::string> targets;
    std::vector<std::string> options;
    std::vector<std::string> properties;
    for (const CommandRef& command : commands) {
        verbs.push_back(command.verb);
        addNames(command.targets, targets);
        addNames(command.options, options);
        addNames(command.properties, properties);
    }
    return {verbs, targets, options, properties};
}

void buildCommands(benchmark::State& state) {
    const ToolFramework framework;
    for (auto _ : state)
        benchmark::DoNotOptimize(framework->buildCommands());
}

void tokenize(benchmark::State& state) {
    const ToolFramework framework;
    const Lexer lexer = lexerOf(framework->buildCommands());
    for (auto _ : state)
        benchmark::DoNotOptimize(lexer.tokenize(LINE_LENGTH, LINE));
}

void parse(benchmark::State& state) {
    const ToolFramework framework;
    const auto all = framework->buildCommands();
    const auto tokens = framework->tokenize(SHORT_LINE_LENGTH, SHORT_LINE, all);
    for (auto _ : state) {
        state.PauseTiming();
        auto candidates = all;
        state.ResumeTiming();
        Parser parser;
        benchmark::DoNotOptimize(parser.parse(tokens, &candidates));
    }
}

void executeRefusedLine(benchmark::State& state) {
    const ToolFramework framework;
    for (auto _ : state)
        benchmark::DoNotOptimize(framework->execute({"show", "extra"}));
}

void executeHelp(benchmark::State& state) {
    const ToolFramework framework;
    for (auto _ : state)
        benchmark::DoNotOptimize(framework->execute({"help"})->output());
}

BENCHMARK(buildCommands)->Unit(benchmark::kMicrosecond);
BENCHMARK(tokenize)->Unit(benchmark::kMicrosecond);
BENCHMARK(parse)->Unit(benchmark::kMicrosecond);
BENCHMARK(executeRefusedLine)->Unit(benchmark::kMicrosecond);
BENCHMARK(executeHelp)->Unit(benchmark::kMicrosecond);

}  // namespace
