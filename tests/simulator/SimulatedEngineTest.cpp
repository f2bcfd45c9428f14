#include "simulator/SimulatedEngine.h"

#include "FleetSimulation.h"
#include "core/Device.h"
#include "protocols/nvme/AdminCommands.h"
#include "simulator/SimulatedNvmePath.h"

#include <boost/thread/exceptions.hpp>

#include <atomic>
#include <new>
#include <stdexcept>
#include <thread>
#include <vector>

namespace orvel::simulator {
namespace {

const protocols::nvme::AdminCommand& anyCommand() {
    static const protocols::nvme::AdminCommand command = protocols::nvme::deviceSelfTest(0, 1);
    return command;
}

std::string text(const core::Status& status) {
    return std::to_string(status.getCategory()) + "/" + std::to_string(status.getCode()) + " " +
           status.getMessage();
}

/// Stops its threads, as the path that owns an engine does.
template <class Engine>
struct Owner {
    Owner() = default;
    Owner(const Owner&) = delete;
    Owner& operator=(const Owner&) = delete;

    ~Owner() { engine.stop(); }

    std::string run(const SimulatedEngine::Work& work) {
        return text(engine.run(anyCommand(), {}, work));
    }

    Engine engine;
};

TEST(SimulatedEngine, WorksInTheBackgroundAndWaitsForIt) {
    Owner<SimulatedEngine> owner;
    std::thread::id worker;
    EXPECT_EQ(owner.run([&] {
        worker = std::this_thread::get_id();
        return core::Status(1, 7, "Done.");
    }),
              "1/7 Done.");
    EXPECT_NE(worker, std::this_thread::get_id());
    EXPECT_NE(worker, std::thread::id());
}

TEST(SimulatedEngine, MakesAStatusOfEachException) {
    Owner<SimulatedEngine> owner;
    EXPECT_EQ(owner.run([]() -> core::Status { throw core::Status(10, 54, "Unreadable."); }),
              "10/54 Unreadable.");
    EXPECT_EQ(owner.run([]() -> core::Status { throw std::bad_alloc(); }),
              "1/12 Cannot allocate memory.");
    EXPECT_EQ(owner.run([]() -> core::Status { throw std::runtime_error("why"); }),
              "1/5 Input/output error.");
    EXPECT_EQ(owner.run([]() -> core::Status { throw 5; }), "1/5 Input/output error.");
    EXPECT_EQ(owner.run([] { return core::Status(); }), text(core::Status()));
}

/// There are no threads for its first command.
class BusyEngine : public SimulatedEngine {
protected:
    void onThreadsStarting() override {
        if (std::exchange(isBusy, false)) throw boost::thread_resource_error();
    }

private:
    bool isBusy = true;
};

TEST(SimulatedEngine, WorksOnceThereCanBeThreads) {
    Owner<BusyEngine> owner;
    const auto work = [] { return core::Status(1, 7, "Done."); };
    EXPECT_EQ(owner.run(work), "1/11 Resource temporarily unavailable.");
    EXPECT_EQ(owner.run(work), "1/7 Done.");
}

TEST(SimulatedEngine, IsCopiedWithoutItsThreads) {
    Owner<SimulatedEngine> owner;
    EXPECT_EQ(owner.run([] { return core::Status(1, 7, "Done."); }), "1/7 Done.");
    const auto copy = owner.engine.clone();
    auto* engine = dynamic_cast<SimulatedEngine*>(copy.get());
    ASSERT_NE(engine, nullptr);
    EXPECT_EQ(text(engine->run(anyCommand(), {}, [] { return core::Status(1, 8, "Too."); })),
              "1/8 Too.");
    engine->stop();
}

TEST(SimulatedEngine, TellsEachOfManyWhatIsItsOwn) {
    constexpr int THREADS = 4;
    constexpr int COMMANDS = 50;
    std::atomic<int> right = 0;
    std::vector<std::thread> threads;
    threads.reserve(THREADS);
    for (int i = 0; i < THREADS; ++i) {
        threads.emplace_back([&right, i] {
            Owner<SimulatedEngine> owner;
            for (int j = 0; j < COMMANDS; ++j) {
                core::Status expected(1, i * COMMANDS + j, "Done.");
                const auto status =
                    owner.engine.run(anyCommand(), {}, [&expected] { return expected; });
                if (status == expected) ++right;
            }
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(right, 200);
}

TEST(SimulatedEngine, KeepsTheFleetToOneThreadAtATime) {
    constexpr int THREADS = 3;
    constexpr int COMMANDS = 10;
    FleetSimulation simulation;
    std::vector<std::thread> threads;
    threads.reserve(THREADS);
    for (int i = 0; i < THREADS; ++i) {
        threads.emplace_back([&simulation] {
            const std::shared_ptr<FleetFolder> folder = simulation.makeFolder();
            SimulatedNvmePath path(folder, "/dev/nvme0");
            core::Device device;
            for (int j = 0; j < COMMANDS; ++j) {
                // Each refusal is counted in the drive's health.
                const auto result = path.send(protocols::nvme::firmwareCommit(1, 0), {}, device);
                EXPECT_EQ(text(result.status), "0/25 NVMe command reported a problem.");
                folder->commit();
            }
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    const auto folder = simulation.makeFolder();
    EXPECT_EQ(get(nvmeDrive(folder->open()).smartHealthLog, 176, 8), 0x10U + 30U);
}

}  // namespace
}  // namespace orvel::simulator
