#include "interfaces/orveli/jobs/StandbyImmediateJob.h"

#include "tests/interfaces/orveli/access/ScriptedDrive.h"

#include <gtest/gtest.h>

namespace orvel::interfaces::orveli::jobs {
namespace {

Outcome run(ScriptedDrive& drive) {
    const auto job = StandbyImmediateJob().clone();
    return runJob(*job, R"(<Object name="StandbyImmediate" type="Method"/>)", {drive.getDevice()});
}

TEST(StandbyImmediateJob, SendsTheCommandAndReportsSuccess) {
    ScriptedDrive drive("ATA");
    drive.onAta(0xE0, 0, 0, {{}});
    EXPECT_EQ(run(drive).output,
              R"(<Object><Object key="SERIAL1" name="Standby Immediate">)"
              R"(<Property name="Status" value="Completed successfully."/></Object></Object>)");
    ASSERT_EQ(drive.sentAta().size(), 1U);
    EXPECT_EQ(drive.sentAta()[0].taskFile.command, 0xE0);
}

TEST(StandbyImmediateJob, FailsWithOneStatusWhateverHappened) {
    ScriptedDrive refusing("ATA");
    ScriptedDrive lost("ATA");
    lost.onAta(0xE0, 0, 0, {{.pathStatus = core::Status(1, 5, "Input/output error")}});
    for (ScriptedDrive* drive : {&refusing, &lost}) {
        const Outcome outcome = run(*drive);
        EXPECT_EQ(outcome.status.getCategory(), 10);
        EXPECT_EQ(outcome.status.getCode(), 16);
        EXPECT_EQ(outcome.output, "");
    }
}

TEST(StandbyImmediateJob, IsForSataDrives) {
    ScriptedDrive drive("NVMe Admin");
    EXPECT_EQ(run(drive).status.getCode(), 3);
    EXPECT_TRUE(drive.sentNvme().empty());
}

}  // namespace
}  // namespace orvel::interfaces::orveli::jobs
