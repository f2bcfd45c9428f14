// Lets a drive test itself, and tells what came of it.
#pragma once

#include "interfaces/orveli/jobs/DriveJob.h"
#include "interfaces/orveli/jobs/Pause.h"
#include "interfaces/orveli/jobs/SelfTest.h"

#include <memory>
#include <string>

namespace orvel::interfaces::orveli::jobs {

/// Method "DriveSelfTest". Argument `TestType`: "short", which is the default, "extended",
/// "conveyance", "status" for what the last test came to, or "abort". Argument `Mode`: "captive",
/// which is the default and waits for the end, or "offline", which starts the test and leaves it
/// alone. Other words: 10/46. What else goes wrong: SelfTest.h.
///
/// The drive's object gets the type of a started test, `SelfTestStatus` in the standard's words,
/// and `SelfTestProgress` in percent.
class DriveSelfTestJob : public DriveJob {
public:
    explicit DriveSelfTestJob(Pause pause = &sleepFor);

    std::unique_ptr<Job> clone() const override;
    core::Status runMethod(std::unique_ptr<core::xml::XmlElement>& response) override;

protected:
    core::Status report(core::Device& device, core::xml::XmlObject& drive) override;

private:
    enum class Mode { CAPTIVE, OFFLINE };

    std::string wantedType() const;
    Mode wantedMode() const;
    std::unique_ptr<SelfTest> selfTestOf(core::Device& device);

    Pause pause;
};

}  // namespace orvel::interfaces::orveli::jobs
