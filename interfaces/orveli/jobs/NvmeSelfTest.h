// The device self-test of an NVMe drive.
#pragma once

#include "core/Device.h"
#include "core/Payload.h"
#include "interfaces/orveli/jobs/Pause.h"
#include "interfaces/orveli/jobs/SelfTest.h"

#include <cstdint>
#include <functional>

namespace orvel::interfaces::orveli::jobs {

/// Of the controller and all its namespaces. Borrows the device. A conveyance test is 10/46.
class NvmeSelfTest : public SelfTest {
public:
    /// Is told how much of a test is done, in percent.
    using Progress = std::function<void(std::uint8_t)>;

    /// A test runs in the background: `runToEnd` looks at it, with `pause` between two looks.
    NvmeSelfTest(core::Device& device, Pause pause, Progress progress);

    void start(Type type) override;

    /// Gives up, with 10/45, after twice the time that the drive or the standard tells, but 10
    /// minutes at most; after 3 minutes without progress; and if the log tells of another test.
    void runToEnd(Type type) override;

    void abort() override;
    State state() override;

private:
    /// Identify Controller data of a drive that has self-tests.
    core::Payload requireSupport();
    void send(std::uint8_t code);
    core::Payload waitForEnd(std::uint8_t code, std::uint64_t minutes);

    core::Device& device;
    Pause pause;
    Progress progress;
};

}  // namespace orvel::interfaces::orveli::jobs
