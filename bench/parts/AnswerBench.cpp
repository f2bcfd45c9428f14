// From the text of an answer to the text of the result, beside the tree's reader alone.
#include "bench/SampleAnswers.h"
#include "core/Status.h"
#include "core/XmlConverter.h"
#include "core/XmlDepth.h"
#include "interfaces/cli/cliframework/ResultBase.h"
#include "tool/DriveResponse.h"

#include <benchmark/benchmark.h>
#include <boost/property_tree/ptree.hpp>
#include <boost/property_tree/xml_parser.hpp>

#include <cstddef>
#include <memory>
#include <sstream>
#include <string>
#include <utility>

namespace {

using cli::framework::OutputType;
using cli::framework::ResultBase;
using orvel::core::Status;
using orvel::core::XmlConverter;
using orvel::core::xml::XmlElement;

constexpr std::size_t DEEP = 2'000;

const std::string& largeText() {
    static const std::string TEXT = tavik::bench::largeAnswer();
    return TEXT;
}

const std::string& deepText() {
    static const std::string TEXT = tavik::bench::deepAnswer(DEEP);
    return TEXT;
}

void countBytes(benchmark::State& state, const std::string& text) {
    state.SetBytesProcessed(static_cast<std::int64_t>(text.size()) * state.iterations());
}

/// All that happens to an answer between the library and standard output.
std::string answer(const std::string& text, OutputType format) {
    auto response = XmlConverter::toXml(text);
    Status status;
    if (auto failure = tavik::norvossd::checkResponseStatus(*response, status)) return "";
    const auto result = tavik::norvossd::responseToResult(std::move(response));
    result->setOutputType(format);
    return result->output();
}

// The unit that everything else is compared with: reading into a tree, and freeing that.
void readXml(benchmark::State& state) {
    for (auto _ : state) {
        std::istringstream stream(largeText());
        boost::property_tree::ptree tree;
        boost::property_tree::read_xml(stream, tree,
                                       boost::property_tree::xml_parser::trim_whitespace);
        benchmark::DoNotOptimize(tree);
    }
    countBytes(state, largeText());
}

void lookAtDepth(benchmark::State& state) {
    for (auto _ : state)
        benchmark::DoNotOptimize(orvel::core::xmlDepth(largeText()));
    countBytes(state, largeText());
}

void toElements(benchmark::State& state) {
    for (auto _ : state)
        benchmark::DoNotOptimize(XmlConverter::toXml(largeText()));
    countBytes(state, largeText());
}

void checkStatus(benchmark::State& state) {
    const auto response = XmlConverter::toXml(largeText());
    for (auto _ : state) {
        Status status;
        benchmark::DoNotOptimize(tavik::norvossd::checkResponseStatus(*response, status));
    }
}

void toResult(benchmark::State& state) {
    for (auto _ : state) {
        state.PauseTiming();
        auto response = XmlConverter::toXml(largeText());
        state.ResumeTiming();
        benchmark::DoNotOptimize(tavik::norvossd::responseToResult(std::move(response)));
    }
}

void render(benchmark::State& state, OutputType format) {
    const auto result = tavik::norvossd::responseToResult(XmlConverter::toXml(largeText()));
    result->setOutputType(format);
    for (auto _ : state)
        benchmark::DoNotOptimize(result->output());
}

void largeAnswer(benchmark::State& state, OutputType format) {
    for (auto _ : state)
        benchmark::DoNotOptimize(answer(largeText(), format));
    countBytes(state, largeText());
}

void deepAnswer(benchmark::State& state, OutputType format) {
    for (auto _ : state)
        benchmark::DoNotOptimize(answer(deepText(), format));
    countBytes(state, deepText());
}

BENCHMARK(readXml)->Unit(benchmark::kMillisecond);
BENCHMARK(lookAtDepth)->Unit(benchmark::kMillisecond);
BENCHMARK(toElements)->Unit(benchmark::kMillisecond);
BENCHMARK(checkStatus)->Unit(benchmark::kMillisecond);
BENCHMARK(toResult)->Unit(benchmark::kMillisecond);

// clang-format off
BENCHMARK_CAPTURE(render,      text,   OutputType::text  )->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(render,      nvmxml, OutputType::nvmxml)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(render,      esx,    OutputType::esx   )->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(render,      json,   OutputType::json  )->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(render,      csv,    OutputType::csv   )->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(largeAnswer, text,   OutputType::text  )->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(largeAnswer, nvmxml, OutputType::nvmxml)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(largeAnswer, esx,    OutputType::esx   )->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(largeAnswer, json,   OutputType::json  )->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(largeAnswer, csv,    OutputType::csv   )->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(deepAnswer,  text,   OutputType::text  )->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(deepAnswer,  nvmxml, OutputType::nvmxml)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(deepAnswer,  esx,    OutputType::esx   )->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(deepAnswer,  json,   OutputType::json  )->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(deepAnswer,  csv,    OutputType::csv   )->Unit(benchmark::kMillisecond);
// clang-format on

}  // namespace
