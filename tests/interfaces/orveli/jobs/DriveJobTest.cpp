#include "interfaces/orveli/jobs/DriveJob.h"

#include "features/JobProperties.h"
#include "protocols/ata/AtaCommand.h"
#include "tests/interfaces/orveli/jobs/ScriptedDrive.h"

#include <gtest/gtest.h>

#include <functional>

namespace orvel::interfaces::orveli::jobs {
namespace {

/// Reports and sets as it was told to.
class SampleJob : public DriveJob {
public:
    explicit SampleJob(Kind kind = Kind::ANY) : DriveJob("Sample", kind, "Sample Report") {}

    std::unique_ptr<Job> clone() const override { return std::make_unique<SampleJob>(); }

    core::Status runMethod(std::unique_ptr<core::xml::XmlElement>& response) override {
        return reportEach(response);
    }

    core::Status runGetProperties(std::unique_ptr<core::xml::XmlElement>& response) override {
        return reportEach(response);
    }

    using DriveJob::findArgument;
    using DriveJob::findNumber;

    std::function<core::Status(const SampleJob&, core::xml::XmlObject&)> action;

protected:
    core::Status report(core::Device& device, core::xml::XmlObject& drive) override {
        return action ? action(*this, drive) : DriveJob::report(device, drive);
    }
};

constexpr const char* METHOD = R"(<Object name="Sample" type="Method"/>)";
constexpr const char* GET = R"(<Object name="Sample" type="GetProperties"/>)";

TEST(DriveJob, MakesAnObjectForEachDriveByItsSerialNumber) {
    ScriptedDrive first("ATA", "ONE");
    ScriptedDrive second("ATA", "TWO");
    SampleJob job;
    job.action = [](const SampleJob&, core::xml::XmlObject& drive) {
        drive.addValue("Name", "Value");
        return core::Status();
    };
    EXPECT_EQ(runJob(job, METHOD, {first.getDevice(), second.getDevice()}).output,
              R"(<Object><Object key="ONE" name="Sample Report"><Property name="Name" )"
              R"(value="Value"/></Object><Object key="TWO" name="Sample Report"><Property )"
              R"(name="Name" value="Value"/></Object></Object>)");
}

TEST(DriveJob, AMethodThatFailsForItsOnlyDriveReturnsTheStatusAndNoAnswer) {
    ScriptedDrive drive("ATA");
    SampleJob job(DriveJob::Kind::NVME);
    const Outcome outcome = runJob(job, METHOD, {drive.getDevice()});
    EXPECT_EQ(outcome.status.getCategory(), 10);
    EXPECT_EQ(outcome.status.getCode(), 3);
    EXPECT_EQ(outcome.output, "");
}

}  // namespace
}  // namespace orvel::interfaces::orveli::jobs
