// Commands through the engine, beside two bare queues and beside a thread pool.
#include "bench/async_engine/SampleCommand.h"
#include "bench/async_engine/TwoStageQueue.h"
#include "core/AsyncEngine.h"
#include "core/AsyncEngineCommand.h"
#include "core/CompletionRecord.h"
#include "core/Payload.h"

#include <benchmark/benchmark.h>
#include <boost/asio/post.hpp>
#include <boost/asio/thread_pool.hpp>
#include <boost/thread/condition_variable.hpp>
#include <boost/thread/lock_types.hpp>
#include <boost/thread/mutex.hpp>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

namespace {

using orvel::core::AsyncEngine;
using orvel::core::AsyncEngineCommand;
using orvel::core::CompletionRecord;
using orvel::core::Payload;
using tavik::bench::SampleCommand;
using tavik::bench::TwoStageQueue;
using Clock = std::chrono::steady_clock;
using Lock = boost::unique_lock<boost::mutex>;

/// Many times what the queues hold, so that filling and draining them hardly counts.
constexpr int BATCH = 10'000;
constexpr int REPETITIONS = 15;
constexpr std::uint32_t SECTOR = 512;

class EngineWithoutDevice final : public AsyncEngine {
public:
    explicit EngineWithoutDevice(int threadsPerStage)
        : AsyncEngine(static_cast<std::uint32_t>(threadsPerStage),
                      static_cast<std::uint32_t>(threadsPerStage)),
          threadsPerStage(threadsPerStage) {}

    ~EngineWithoutDevice() override { stop(); }

    std::unique_ptr<AsyncEngine> clone() const override {
        return std::make_unique<EngineWithoutDevice>(threadsPerStage);
    }

protected:
    void onThreadsStarting() override {}

    void onThreadsStopped() override {}

    void ioSend(int, std::unique_ptr<AsyncEngineCommand>&) override {}

private:
    int threadsPerStage;
};

/// One task for each command, which sends (nothing) and delivers; nothing bounds the pool's queue.
class Pool {
public:
    explicit Pool(int threadsPerStage) : pool(2 * static_cast<std::size_t>(threadsPerStage)) {}

    ~Pool() { pool.join(); }

    void add(std::unique_ptr<AsyncEngineCommand> command) {
        boost::asio::post(pool,
                          [command = std::move(command)] { tavik::bench::deliver(*command); });
    }

private:
    boost::asio::thread_pool pool;
};

/// Lets the submitter sleep until all of its commands have been delivered.
class Arrivals {
public:
    /// Not while some are still expected.
    void expect(int count) {
        missing = count;
        complete = false;
    }

    void arrive() {
        if (missing.fetch_sub(1) != 1) return;
        {
            Lock lock(mutex);
            complete = true;
        }
        becameComplete.notify_one();
    }

    void wait() {
        Lock lock(mutex);
        while (!complete)
            becameComplete.wait(lock);
    }

private:
    std::atomic<int> missing = 0;
    bool complete = true;  ///< guarded by mutex, except in expect
    boost::mutex mutex;
    boost::condition_variable becameComplete;
};

// A callback gets nothing but its record, and the benchmarks run one after the other.
Arrivals arrivals;
Clock::time_point arrivalTime;  ///< of the one command under way; read after arrivals.wait

void arrive(CompletionRecord*) {
    arrivals.arrive();
}

void noteTimeAndArrive(CompletionRecord*) {
    arrivalTime = Clock::now();
    arrivals.arrive();
}

/// What a submitter holds: each command that it adds is a copy of the sample.
class Submitter {
public:
    explicit Submitter(void (*callback)(CompletionRecord*)) {
        sample.getCompletionRecord().callback = callback;
    }

    std::unique_ptr<AsyncEngineCommand> newCommand() const {
        return std::make_unique<AsyncEngineCommand>(1, sample, payload, 2);
    }

    /// Returns when the last of `count` commands has been delivered.
    template <class Carrier>
    void sendThrough(Carrier& carrier, int count) const {
        arrivals.expect(count);
        for (int i = 0; i < count; ++i)
            carrier.add(newCommand());
        arrivals.wait();
    }

private:
    SampleCommand sample;
    Payload payload = Payload(SECTOR);
};

/// Sorts a part of `values`, which must not be empty; `fraction` is below 1.
double quantile(std::vector<double>& values, double fraction) {
    const auto place =
        values.begin() + static_cast<std::ptrdiff_t>(fraction * static_cast<double>(values.size()));
    std::nth_element(values.begin(), place, values.end());
    return *place;
}

/// The threads run when this returns, and the queues have been filled once.
template <class Carrier>
void warmUp(Carrier& carrier) {
    Submitter(arrive).sendThrough(carrier, BATCH);
}

int threadsPerStage(const benchmark::State& state) {
    return static_cast<int>(state.range(0));
}

template <class Carrier>
void throughput(benchmark::State& state) {
    Carrier carrier(threadsPerStage(state));
    warmUp(carrier);
    const Submitter submitter(arrive);
    for (auto _ : state)
        submitter.sendThrough(carrier, BATCH);
    state.SetItemsProcessed(BATCH * state.iterations());
}

// One command at a time: under load the time is that of the queue before it, and nothing else.
template <class Carrier>
void latency(benchmark::State& state) {
    Carrier carrier(threadsPerStage(state));
    warmUp(carrier);
    const Submitter submitter(noteTimeAndArrive);
    std::vector<double> microseconds;
    microseconds.reserve(static_cast<std::size_t>(state.max_iterations));
    for (auto _ : state) {
        auto command = submitter.newCommand();
        arrivals.expect(1);
        const auto start = Clock::now();
        carrier.add(std::move(command));
        arrivals.wait();
        microseconds.push_back(
            std::chrono::duration<double, std::micro>(arrivalTime - start).count());
    }
    state.counters["median_us"] = quantile(microseconds, 0.5);
    state.counters["p99_us"] = quantile(microseconds, 0.99);
}

// Batches in turn, so that what else the machine does hits both sides of each quotient.
void engineInTurnWithQueues(benchmark::State& state) {
    EngineWithoutDevice engine(threadsPerStage(state));
    TwoStageQueue queues(threadsPerStage(state));
    warmUp(engine);
    warmUp(queues);
    const Submitter submitter(arrive);
    const auto secondsFor = [&submitter](auto& carrier) {
        const auto start = Clock::now();
        submitter.sendThrough(carrier, BATCH);
        return std::chrono::duration<double>(Clock::now() - start).count();
    };
    std::vector<double> quotients;
    for (auto _ : state) {
        const auto queuesBefore = secondsFor(queues);
        const auto engineFirst = secondsFor(engine);
        const auto engineSecond = secondsFor(engine);
        const auto queuesAfter = secondsFor(queues);
        quotients.push_back((queuesBefore + queuesAfter) / (engineFirst + engineSecond));
    }
    state.counters["engine_to_queues"] = quantile(quotients, 0.5);
}

void repeated(benchmark::internal::Benchmark* bench) {
    bench->ArgName("per_stage")
        ->Arg(1)
        ->Arg(2)
        ->UseRealTime()
        ->MeasureProcessCPUTime()
        ->Repetitions(REPETITIONS)
        ->DisplayAggregatesOnly();
}

BENCHMARK_TEMPLATE(throughput, EngineWithoutDevice)->Apply(repeated)->Unit(benchmark::kMillisecond);
BENCHMARK_TEMPLATE(throughput, TwoStageQueue)->Apply(repeated)->Unit(benchmark::kMillisecond);
BENCHMARK_TEMPLATE(throughput, Pool)->Apply(repeated)->Unit(benchmark::kMillisecond);
BENCHMARK_TEMPLATE(latency, EngineWithoutDevice)->Apply(repeated)->Unit(benchmark::kMicrosecond);
BENCHMARK_TEMPLATE(latency, TwoStageQueue)->Apply(repeated)->Unit(benchmark::kMicrosecond);
BENCHMARK(engineInTurnWithQueues)->Apply(repeated)->Unit(benchmark::kMillisecond);

}  // namespace
