#include "interfaces/orveli/jobs/DriveJob.h"

#include "features/FeatureStatuses.h"
#include "features/JobProperties.h"
#include "tests/interfaces/orveli/access/ScriptedDrive.h"
#include "tests/interfaces/orveli/jobs/AnswerLines.h"

#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>

namespace orvel::interfaces::orveli::jobs {
namespace {

namespace attributes = orvel::features::device_attributes;
namespace catalogue = orvel::features;

/// Reports and sets as it was told to.
class SampleJob : public DriveJob {
public:
    explicit SampleJob(Kind kind = Kind::ANY) : DriveJob("Sample", kind, "Sample Report") {}

    std::unique_ptr<Job> clone() const override { return std::make_unique<SampleJob>(); }

    core::Status runMethod(std::unique_ptr<core::xml::XmlElement>& response) override {
        return isForSelected ? reportSelected(response) : reportEach(response);
    }

    core::Status runGetProperties(std::unique_ptr<core::xml::XmlElement>& response) override {
        return reportEach(response);
    }

    using DriveJob::findArgument;
    using DriveJob::findNumber;
    using DriveJob::keepRequested;
    using DriveJob::requestedNames;

    std::function<core::Status(const SampleJob&, core::xml::XmlObject&)> action;
    std::function<core::Status(const core::Attribute&)> setter;
    std::string key;
    bool isForSelected = false;

protected:
    core::Status report(core::Device& device, core::xml::XmlObject& drive) override {
        return action ? action(*this, drive) : DriveJob::report(device, drive);
    }

    core::Status set(core::Device& device, const core::Attribute& property) override {
        return setter ? setter(property) : DriveJob::set(device, property);
    }

    std::string keyOf(const core::Device& device) const override {
        return key.empty() ? DriveJob::keyOf(device) : key;
    }
};

constexpr const char* METHOD = R"(<Object name="Sample" type="Method"/>)";
constexpr const char* GET = R"(<Object name="Sample" type="GetProperties"/>)";
constexpr const char* SET = R"(<Object name="Sample" type="SetProperty"><Object name="Properties">)"
                            R"(<Property name="PhySpeed" type="string" value="6"/></Object>)"
                            R"(</Object>)";

core::Status reportName(const SampleJob&, core::xml::XmlObject& drive) {
    drive.addValue("Name", "Value");
    return {};
}

core::Status reportThenFail(const SampleJob& job, core::xml::XmlObject& drive) {
    (void)reportName(job, drive);
    throw core::Status(10, 33, "No data.");
}

std::string statusOf(const core::Status& status) {
    return std::to_string(status.getCategory()) + "/" + std::to_string(status.getCode());
}

TEST(DriveJob, SupportsDrivesByTheirKind) {
    ScriptedDrive ata("ATA");
    ScriptedDrive nvme("NVMe Admin");
    ScriptedDrive other("SCSI");

    struct Row {
        DriveJob::Kind kind;
        bool isForAta;
        bool isForNvme;
    };

    for (const Row& row :
         {Row{DriveJob::Kind::ATA, true, false}, Row{DriveJob::Kind::NVME, false, true},
          Row{DriveJob::Kind::ANY, true, true}}) {
        const SampleJob job(row.kind);
        EXPECT_EQ(job.supports(*ata.getDevice()), row.isForAta);
        EXPECT_EQ(job.supports(*nvme.getDevice()), row.isForNvme);
        EXPECT_FALSE(job.supports(*other.getDevice()));
    }
}

TEST(DriveJob, MakesAnObjectForEachDriveByItsSerialNumber) {
    ScriptedDrive first("ATA", "ONE");
    ScriptedDrive second("ATA", "TWO");
    SampleJob job;
    job.action = &reportName;
    EXPECT_EQ(runJob(job, METHOD, {first.getDevice(), second.getDevice()}).output,
              R"(<Object><Object key="ONE" name="Sample Report"><Property name="Name" )"
              R"(value="Value"/></Object><Object key="TWO" name="Sample Report"><Property )"
              R"(name="Name" value="Value"/></Object></Object>)");
}

TEST(DriveJob, AKeyCanStandInAFileNameAndInJson) {
    ScriptedDrive drive("ATA", "../A\"B\\C\x7F");
    SampleJob job;
    job.action = &reportName;
    EXPECT_EQ(answerLines(runJob(job, METHOD, {drive.getDevice()}).output),
              "[Sample Report .._A_B_C_]\n Name=Value\n");
}

TEST(DriveJob, AJobMayHaveAKeyOfItsOwn) {
    ScriptedDrive drive("ATA", "ONE");
    SampleJob job;
    job.key = "7";
    job.action = &reportName;
    EXPECT_EQ(answerLines(runJob(job, METHOD, {drive.getDevice()}).output),
              "[Sample Report 7]\n Name=Value\n");
}

TEST(DriveJob, AMethodThatFailsForItsOnlyDriveReturnsTheStatusAndNoAnswer) {
    ScriptedDrive drive("ATA");
    SampleJob job(DriveJob::Kind::NVME);
    Outcome outcome = runJob(job, METHOD, {drive.getDevice()});
    EXPECT_EQ(statusOf(outcome.status), "10/3");
    EXPECT_EQ(outcome.output, "");
    SampleJob failing;
    failing.action = &reportThenFail;
    outcome = runJob(failing, METHOD, {drive.getDevice()});
    EXPECT_EQ(statusOf(outcome.status), "10/33");
    EXPECT_EQ(outcome.output, "");
}

TEST(DriveJob, AMethodForSeveralDrivesTellsOfEachFailure) {
    ScriptedDrive first("ATA", "ONE");
    ScriptedDrive second("NVMe Admin", "TWO");
    SampleJob job(DriveJob::Kind::ATA);
    job.action = &reportName;
    const Outcome outcome = runJob(job, METHOD, {first.getDevice(), second.getDevice()});
    EXPECT_EQ(outcome.status, core::Status());
    EXPECT_EQ(answerLines(outcome.output),
              "[Sample Report ONE]\n"
              " Name=Value\n"
              "[Sample Report TWO]\n"
              " [ status]\n"
              "  Category=10\n"
              "  Code=3\n"
              "  Message=The selected drive does not support this feature.\n");
}

TEST(DriveJob, AnErrorOfTheProgramCostsOnlyTheAnswerOfItsDrive) {
    ScriptedDrive first("ATA", "ONE");
    ScriptedDrive second("ATA", "TWO");
    SampleJob job;
    int calls = 0;
    job.action = [&](const SampleJob& sample, core::xml::XmlObject& object) {
        if (++calls == 1) throw std::out_of_range("Too far.");
        return reportName(sample, object);
    };
    const Outcome outcome = runJob(job, METHOD, {first.getDevice(), second.getDevice()});
    EXPECT_EQ(outcome.status, core::Status());
    EXPECT_EQ(answerLines(outcome.output), "[Sample Report ONE]\n"
                                           " [ status]\n"
                                           "  Category=1\n"
                                           "  Code=5\n"
                                           "  Message=Too far.\n"
                                           "[Sample Report TWO]\n"
                                           " Name=Value\n");
    job.setter = [](const core::Attribute&) -> core::Status { throw std::length_error("Long."); };
    const Outcome setting = runJob(job, SET, {first.getDevice()});
    EXPECT_EQ(statusOf(setting.status), "1/5");
    EXPECT_EQ(setting.status.getMessage(), "Long.");
    job.setter = [](const core::Attribute&) -> core::Status { throw 7; };
    EXPECT_EQ(statusOf(runJob(job, SET, {first.getDevice()}).status), "1/5");
}

TEST(DriveJob, APropertyRequestThatFailsTellsSoInTheDrivesObject) {
    ScriptedDrive drive("ATA", "ONE");
    SampleJob job;
    job.action = &reportThenFail;
    EXPECT_EQ(answerLines(runJob(job, GET, {drive.getDevice()}).output), "[Sample Report ONE]\n"
                                                                         " Name=Value\n"
                                                                         " [ status]\n"
                                                                         "  Category=10\n"
                                                                         "  Code=33\n"
                                                                         "  Message=No data.\n");
}

TEST(DriveJob, ADriveWithNothingToReportGetsTheWordsOfSuccess) {
    ScriptedDrive drive("ATA", "ONE");
    SampleJob job;
    job.action = [](const SampleJob&, core::xml::XmlObject&) {
        return core::Status(0, 0, "All done.");
    };
    const Outcome outcome = runJob(job, METHOD, {drive.getDevice()});
    EXPECT_EQ(outcome.status, core::Status());
    EXPECT_EQ(answerLines(outcome.output), "[Sample Report ONE]\n"
                                           " Status=All done.\n");
}

TEST(DriveJob, ADriveWithASectionAloneIsNotBare) {
    ScriptedDrive drive("ATA", "ONE");
    SampleJob job;
    job.action = [](const SampleJob&, core::xml::XmlObject& object) {
        addSection(object, "Log", "5");
        return core::Status();
    };
    EXPECT_EQ(answerLines(runJob(job, METHOD, {drive.getDevice()}).output),
              "[Sample Report ONE]\n [Log 5]\n");
}

TEST(DriveJob, NeedsADrive) {
    SampleJob job;
    const Outcome outcome = runJob(job, METHOD, {});
    EXPECT_EQ(statusOf(outcome.status), "10/5");
    EXPECT_EQ(outcome.output, "");
}

TEST(DriveJob, WhatMustNotMeetAnyDriveNeedsOneThatIsSelected) {
    ScriptedDrive first("ATA", "ONE");
    ScriptedDrive second("ATA", "TWO");
    SampleJob job;
    job.isForSelected = true;
    job.action = &reportName;
    const auto request = [](const std::string& inner) {
        return R"(<Object name="Sample" type="Method">)" + inner + "</Object>";
    };
    const auto codeFor = [&](const std::string& inner, const core::Device::Devices& devices) {
        const Outcome outcome = runJob(job, request(inner), devices);
        return statusOf(outcome.status) + " " + answerLines(outcome.output);
    };
    const auto& one = first.getDevice();
    EXPECT_EQ(codeFor("", {one}), "10/5 ");
    EXPECT_EQ(codeFor(R"(<List name="Others"/>)", {one}), "10/5 ");
    EXPECT_EQ(codeFor(R"(<Object name="Devices"/>)", {one}), "10/5 ");
    EXPECT_EQ(codeFor(ONE_DEVICE, {}), "10/5 ");
    EXPECT_EQ(codeFor(ONE_DEVICE, {one, second.getDevice()}), "10/6 ");
    EXPECT_EQ(codeFor(ONE_DEVICE, {one}), "0/0 [Sample Report ONE]\n Name=Value\n");
}

TEST(DriveJob, ReportsAndSetsNothingByItself) {
    ScriptedDrive drive("ATA");
    SampleJob job;
    EXPECT_EQ(statusOf(runJob(job, METHOD, {drive.getDevice()}).status), "10/34");
    EXPECT_EQ(statusOf(runJob(job, SET, {drive.getDevice()}).status), "10/34");
}

TEST(DriveJob, SetsThePropertyOfTheOneDrive) {
    ScriptedDrive drive("ATA");
    SampleJob job;
    std::string seen;
    job.setter = [&](const core::Attribute& property) {
        seen = property.getName() + "=" + property.valueAsString();
        return core::Status(0, 0, "Later.");
    };
    const Outcome outcome = runJob(job, SET, {drive.getDevice()});
    EXPECT_EQ(statusOf(outcome.status), "0/0");
    EXPECT_EQ(outcome.status.getMessage(), "Later.");
    EXPECT_EQ(seen, "PhySpeed=6");
}

TEST(DriveJob, ASettingThatThrowsReturnsWhatItThrew) {
    ScriptedDrive drive("ATA");
    SampleJob job;
    job.setter = [](const core::Attribute&) -> core::Status {
        throw core::Status(10, 51, "No such speed.");
    };
    const Outcome outcome = runJob(job, SET, {drive.getDevice()});
    EXPECT_EQ(statusOf(outcome.status), "10/51");
    EXPECT_EQ(outcome.status.getMessage(), "No such speed.");
}

TEST(DriveJob, SetsNothingOnADriveOfAnotherKind) {
    ScriptedDrive drive("NVMe Admin");
    SampleJob job(DriveJob::Kind::ATA);
    bool isSet = false;
    job.setter = [&](const core::Attribute&) {
        isSet = true;
        return core::Status();
    };
    EXPECT_EQ(statusOf(runJob(job, SET, {drive.getDevice()}).status), "10/3");
    EXPECT_FALSE(isSet);
}

/// A job that has this request.
void give(SampleJob& job, const std::string& request) {
    job.setRequest(core::XmlConverter::toXml(request));
}

TEST(DriveJob, FindsTheLastArgumentOfAName) {
    SampleJob job;
    EXPECT_EQ(job.findArgument(catalogue::smart::ID()), std::nullopt) << "without a request";
    give(job, R"(<Object name="Sample"><Property name="ID" value="1"/>)"
              R"(<Property name="Other" value="2"/><Property name="ID" value="3"/>)"
              R"(<Object name="Properties"><Property name="ID" value="4"/></Object></Object>)");
    EXPECT_EQ(job.findArgument(catalogue::smart::ID()), "3");
    EXPECT_EQ(job.findArgument(catalogue::format::Type()), std::nullopt);
    give(job, R"(<List name="Sample"><Property name="ID" value="1"/></List>)");
    EXPECT_EQ(job.findArgument(catalogue::smart::ID()), std::nullopt);
}

TEST(DriveJob, ReadsArgumentsAsNumbers) {
    struct Row {
        const char* text;
        std::uint64_t number;
    };

    for (const Row& row : {Row{"0", 0}, Row{"10", 10}, Row{"0x10", 16}, Row{"fF", 255}}) {
        SCOPED_TRACE(row.text);
        SampleJob job;
        give(job,
             std::string(R"(<Object><Property name="ID" value=")") + row.text + R"("/></Object>)");
        EXPECT_EQ(job.findNumber(catalogue::smart::ID()), row.number);
    }
    SampleJob job;
    give(job, "<Object/>");
    EXPECT_EQ(job.findNumber(catalogue::smart::ID()), std::nullopt);
}

TEST(DriveJob, RefusesArgumentsThatAreNoNumbers) {
    for (const char* text : {"", "-1", "1.5", "ten", "0x", "0xG", "0xG1"}) {
        SCOPED_TRACE(text);
        SampleJob job;
        give(job, std::string(R"(<Object><Property name="ID" value=")") + text + R"("/></Object>)");
        try {
            (void)job.findNumber(catalogue::smart::ID());
            ADD_FAILURE() << "nothing was thrown";
        } catch (const core::Status& status) {
            EXPECT_EQ(statusOf(status), "10/36");
            EXPECT_EQ(status.getMessage(), "Invalid property specified. ID must be a number.");
        }
    }
}

TEST(DriveJob, TellsTheNamesThatAreAskedForInTheirOrder) {
    SampleJob job;
    EXPECT_TRUE(job.requestedNames().empty()) << "without a request";
    give(job, R"(<Object><Property name="Scan"/><Object name="Devices"><Property name="Index"/>)"
              R"(</Object><Object name="Properties"><Property name="B"/><Property name="A"/>)"
              R"(</Object></Object>)");
    EXPECT_EQ(job.requestedNames(), (std::vector<std::string>{"B", "A"}));
    give(job, "<Object/>");
    EXPECT_TRUE(job.requestedNames().empty());
}

TEST(DriveJob, KeepsWhatIsAskedForInTheOrderOfTheRequest) {
    SampleJob job;
    give(job, R"(<Object><Object name="Properties"><Property name="second"/>)"
              R"(<Property name="Third"/><Property name="First"/></Object></Object>)");
    core::xml::XmlObject drive;
    drive.addValue("First", "1");
    drive.addValue("Hidden", "0");
    drive.addValue("Second", "2");
    job.keepRequested(drive);
    EXPECT_EQ(answerLines(drive, ""), "Second=2\nThird=Property not found\nFirst=1\n");
}

TEST(DriveJob, KeepsEverythingIfNothingIsAskedFor) {
    SampleJob job;
    give(job, "<Object/>");
    core::xml::XmlObject drive;
    drive.addValue("First", "1");
    job.keepRequested(drive);
    EXPECT_EQ(answerLines(drive, ""), "First=1\n");
}

std::string xmlOf(const core::xml::XmlObject& object) {
    std::string text;
    object.toXml(text);
    return text;
}

TEST(DriveJob, PutsPropertiesOfTheCatalogue) {
    core::xml::XmlObject object;
    put(object, catalogue::power_governor::PowerGovernorMode(), std::uint32_t{2});
    EXPECT_EQ(xmlOf(object),
              R"(<Object><Property category="attribute" displayName="Power Governor Mode" )"
              R"(name="PowerGovernorMode" size="4" type="uint32" value="2"/></Object>)");
}

TEST(DriveJob, AddsSectionsWithAndWithoutAKey) {
    core::xml::XmlObject object;
    addSection(object, "Outer", "1").addValue("Name", "Value");
    addSection(object, "Bare");
    EXPECT_EQ(xmlOf(object), R"(<Object><Object key="1" name="Outer"><Property name="Name" )"
                             R"(value="Value"/></Object><Object name="Bare"></Object></Object>)");
}

TEST(DriveJob, AddsPayloadsAsDigits) {
    core::xml::XmlObject object;
    const std::uint8_t bytes[] = {0x0F, 0xA0};
    addPayload(object, core::Payload(bytes, 2));
    EXPECT_EQ(xmlOf(object),
              R"(<Object><Object category="payload" value="0FA0"></Object></Object>)");
}

TEST(DriveJob, RefusesRaidMembersWhereItMatters) {
    ScriptedDrive drive("ATA");
    EXPECT_NO_THROW(requireNoRaidMember(*drive.getDevice()));
    core::Attribute member = attributes::RAIDMember();
    member.setValue(true);
    drive->setAttribute(member);
    try {
        requireNoRaidMember(*drive.getDevice());
        ADD_FAILURE() << "nothing was thrown";
    } catch (const core::Status& status) {
        EXPECT_EQ(statusOf(status), "10/12");
    }
}

}  // namespace
}  // namespace orvel::interfaces::orveli::jobs
