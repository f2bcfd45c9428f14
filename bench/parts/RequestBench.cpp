// Building a request and rendering it to text.
#include "core/xml/Vocabulary.h"
#include "features/JobConstants.h"
#include "features/JobProperties.h"
#include "tool/DriveRequest.h"

#include <benchmark/benchmark.h>

#include <string>

namespace {

namespace jobs = orvel::interfaces::orveli::jobs;
namespace methods = orvel::interfaces::orveli::xml::tags::types;
using namespace orvel::features;
using tavik::norvossd::DriveRequest;

DriveRequest formatRequest() {
    DriveRequest request(jobs::Format, methods::Method, "1");
    request.addAsTyped(format::Type(), format::types::NVME_FORMAT);
    request.addAsTyped(format::SecureEraseSetting(), "1");
    request.addAsTyped(format::LBAFormat(), "3");
    request.addAsTyped(format::Force(), "true");
    return request;
}

void buildRequest(benchmark::State& state) {
    for (auto _ : state)
        benchmark::DoNotOptimize(formatRequest());
}

void renderRequest(benchmark::State& state) {
    const DriveRequest request = formatRequest();
    for (auto _ : state)
        benchmark::DoNotOptimize(request.getObject().toString());
}

BENCHMARK(buildRequest)->Unit(benchmark::kMicrosecond);
BENCHMARK(renderRequest)->Unit(benchmark::kMicrosecond);

}  // namespace
