// The SMART self-test of a SATA drive.
#pragma once

#include "core/Device.h"
#include "core/Payload.h"
#include "interfaces/orveli/jobs/SelfTest.h"

namespace orvel::interfaces::orveli::jobs {

/// Borrows the device. The drive's captive mode runs a test to its end.
class AtaSelfTest : public SelfTest {
public:
    explicit AtaSelfTest(core::Device& device) : device(device) {}

    void start(Type type) override;
    void runToEnd(Type type) override;
    void abort() override;
    State state() override;

private:
    /// SMART data of a drive that has self-tests.
    core::Payload smartData();
    core::Payload requireStartable(Type type);

    core::Device& device;
};

}  // namespace orvel::interfaces::orveli::jobs
