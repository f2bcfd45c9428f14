// Requests as the tool sends them, and the answers that come back.
#include "interfaces/orveli/library/RequestDesk.h"

#include "features/DeviceAttributes.h"
#include "tests/interfaces/orveli/library/FakeJob.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

namespace orvel::interfaces::orveli::library {
namespace {

using core::Attribute;
using core::Device;
using core::Status;
using core::xml::XmlElement;
using core::xml::XmlObject;
namespace device_attributes = features::device_attributes;

void set(core::AttributeHolder& holder, Attribute attribute, const std::string& value) {
    attribute.setValue(value);
    holder.setAttribute(attribute);
}

/// Finds three drives, the third of another product; counts how often it was asked. Throws while it
/// is broken.
class ThreeDrives : public core::DeviceFinder {
public:
    ThreeDrives(int& scans, const bool& isBroken)
        : DeviceFinder("ThreeDrives"),
          scans(scans),
          isBroken(isBroken) {}

    void find(Device::Devices& devices) override {
        ++scans;
        if (isBroken) throw Status(1, 5, "no scan");
        for (const auto& [path, serial, product] :
             std::vector<std::tuple<std::string, std::string, std::string>>{
                 {"/dev/a", "S1", "Bexmere"},
                 {"/dev/b", "S2", "Bexmere"},
                 {"/dev/c", "S3", "Elmstow"}}) {
            auto device = std::make_shared<Device>();
            set(*device, device_attributes::DevicePath(), path);
            set(*device, device_attributes::SerialNumber(), serial);
            set(*device, device_attributes::Product(), product);
            core::Partition partition;
            set(partition, Attribute("Path", "Path", "string"), path + "1");
            device->addPartition(partition);
            devices.push_back(device);
        }
    }

    std::unique_ptr<DeviceFinder> clone() const override {
        return std::make_unique<ThreeDrives>(*this);
    }

private:
    int& scans;
    const bool& isBroken;
};

class RequestDeskTest : public ::testing::Test {
public:
    RequestDeskTest() {
        manager.addDeviceFinder(ThreeDrives(scans, isScanBroken));
        addJob("List", [](const Job& job, std::unique_ptr<XmlElement>& response) {
            auto output = std::make_unique<XmlObject>();
            for (const auto& device : job.getDevices())
                output->addValue("S", device->readText(device_attributes::SerialNumber()));
            response = std::move(output);
            return Status();
        });
    }

protected:
    void addJob(const std::string& name, FakeJob::Action action) {
        registry.add(std::make_unique<FakeJob>(name, std::move(action)));
    }

    static std::string request(const std::string& job, const std::string& children) {
        return R"(<?xml version="1.0" encoding="utf-8"?><Object name=")" + job +
               R"(" type="Method">)" + children + "</Object>";
    }

    static std::string selecting(const std::string& name, const std::string& value) {
        return R"(<List name="Devices"><Object name="Device"><Property category="attribute" name=")" +
               name + R"(" type="string" value=")" + value + R"("/></Object></List>)";
    }

    /// The answer without its identifier, which is a place in memory.
    std::string serve(const std::string& text) {
        auto answer = desk.serve(text);
        answer->removeAttribute("identifier");
        std::string written;
        answer->toXml(written);
        return written;
    }

    /// Category and code of the answer's status.
    std::pair<std::string, std::string> statusOf(const std::string& text) {
        const auto answer = desk.serve(text);
        const auto& properties = answer->getObjects().front()->getProperties();
        return {properties.at(0)->getAttribute("value"), properties.at(1)->getAttribute("value")};
    }

    /// The serial numbers of the drives that the job got.
    std::string servedDrives(const std::string& children) {
        const auto answer = desk.serve(request("List", children));
        std::string serials;
        if (answer->getObjects().size() < 2) return "no output";
        for (const auto& property : answer->getObjects().at(1)->getProperties())
            serials += property->getAttribute("value");
        return serials;
    }

    int scans = 0;
    bool isScanBroken = false;
    core::DeviceManager manager;
    JobRegistry registry;
    RequestDesk desk{manager, registry};
};

using Pair = std::pair<std::string, std::string>;

TEST_F(RequestDeskTest, AnswersWithTheJobItsStatusAndItsOutput) {
    EXPECT_EQ(serve(request("List", selecting("Index", "1"))),
              R"(<Object category="Job" name="List">)"
              R"(<Property name="State" value="7"/>)"
              R"(<Property name="Progress" value="0"/>)"
              R"(<Object category="status">)"
              R"(<Property name="Category" value="0"/>)"
              R"(<Property name="Code" value="0"/>)"
              R"(<Property name="Message" value="Completed successfully."/>)"
              R"(</Object>)"
              R"(<Object category="output"><Property name="S" value="S2"/></Object>)"
              R"(</Object>)");
}

TEST_F(RequestDeskTest, LeavesTheOutputOutWhereTheJobHasNone) {
    addJob("Fail", [](const Job&, auto&) { return Status(10, 3, "no"); });
    EXPECT_EQ(serve(request("Fail", "")), R"(<Object category="Job" name="Fail">)"
                                          R"(<Property name="State" value="7"/>)"
                                          R"(<Property name="Progress" value="0"/>)"
                                          R"(<Object category="status">)"
                                          R"(<Property name="Category" value="10"/>)"
                                          R"(<Property name="Code" value="3"/>)"
                                          R"(<Property name="Message" value="no"/>)"
                                          R"(</Object></Object>)");
}

TEST_F(RequestDeskTest, RefusesTextThatIsNoXmlObject) {
    for (const char* text : {"", "<", "<Object", "plain", "<Property/>", "<List></List>"}) {
        SCOPED_TRACE(text);
        EXPECT_EQ(serve(text), R"(<Object category="Job" name="">)"
                               R"(<Object category="status">)"
                               R"(<Property name="Category" value="11"/>)"
                               R"(<Property name="Code" value="2"/>)"
                               R"(<Property name="Message" value="No input XML"/>)"
                               R"(</Object></Object>)");
    }
}

TEST_F(RequestDeskTest, RefusesAnUnknownJobByItsName) {
    EXPECT_EQ(serve(request("Nothing", "")), R"(<Object category="Job" name="Nothing">)"
                                             R"(<Object category="status">)"
                                             R"(<Property name="Category" value="11"/>)"
                                             R"(<Property name="Code" value="4"/>)"
                                             R"(<Property name="Message" value="Job not found"/>)"
                                             R"(</Object></Object>)");
    EXPECT_EQ(scans, 0);
}

TEST_F(RequestDeskTest, RefusesAMethodTypeThatTheJobLacks) {
    EXPECT_EQ(statusOf(R"(<Object name="List" type="Parser"></Object>)"), Pair("11", "5"));
}

TEST_F(RequestDeskTest, GivesTheJobAllDrivesWithoutAList) {
    EXPECT_EQ(servedDrives(""), "S1S2S3");
}

TEST_F(RequestDeskTest, SelectsDrivesByEachIdentifier) {
    EXPECT_EQ(servedDrives(selecting("Index", "2")), "S3");
    EXPECT_EQ(servedDrives(selecting("SerialNumber", "s1")), "S1");
    EXPECT_EQ(servedDrives(selecting("Path", "/DEV/B")), "S2");
    EXPECT_EQ(servedDrives(selecting("SerialNumber", "/DEV/B")), "S2");
    EXPECT_EQ(servedDrives(selecting("DriveLetter", "/dev/c1")), "S3");
}

TEST_F(RequestDeskTest, SelectsSeveralDrivesEachOnce) {
    EXPECT_EQ(servedDrives(R"(<List name="Devices">)"
                           R"(<Object><Property name="Index" type="string" value="2"/></Object>)"
                           R"(<Object><Property name="Index" type="string" value="0"/></Object>)"
                           R"(<Object><Property name="SerialNumber" type="string" value="S3"/>)"
                           R"(</Object></List>)"),
              "S3S1");
}

TEST_F(RequestDeskTest, TellsWhichIdentifierFoundNoDrive) {
    struct Row {
        const char* name;
        const char* value;
        Pair status;
    };

    const Row rows[] = {
        {"Index", "3", {"0", "4"}},         {"Index", "x", {"0", "4"}},
        {"SerialNumber", "S9", {"0", "5"}}, {"DriveLetter", "/dev/c2", {"0", "6"}},
        {"DriveId", "X", {"0", "7"}},       {"CSMIIdentifiers", "1", {"0", "7"}},
        {"Path", "/dev/d", {"0", "8"}},     {"SerialNumber", "/DEV/D", {"0", "8"}},
        {"Color", "red", {"11", "10"}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(statusOf(request("List", selecting(row.name, row.value))), row.status);
    }
}

TEST_F(RequestDeskTest, RefusesASelectedDriveOfAnUnsupportedProduct) {
    const std::string products =
        R"(<Property name="SupportedProducts" type="vectorOfStrings" value="Ashlade~Bexmere"/>)";
    EXPECT_EQ(statusOf(request("List", products + selecting("Index", "2"))), Pair("10", "1"));
    EXPECT_EQ(servedDrives(products + selecting("Index", "1")), "S2");
}

TEST_F(RequestDeskTest, TellsWhyASelectedDriveIsOfNoKnownProduct) {
    struct Row {
        const char* model;
        const char* error;
        const char* message;
    };

    const Row rows[] = {
        {nullptr, "No such device.",
         "Failed to retrieve data from selected device. No such device."},
        {nullptr, "Failed to retrieve data from selected device.",
         "Failed to retrieve data from selected device."},
        {nullptr, "Failed to retrieve data from selected device. Loose cable.",
         "Failed to retrieve data from selected device. Loose cable."},
        {"OTHER 1", "No such device.", "Drive is not an Norvo SSD."},
        {nullptr, nullptr, "Drive is not an Norvo SSD."},
    };
    const std::string products = R"(<Property name="SupportedProducts" value="Bexmere"/>)";
    for (const Row& row : rows) {
        Device device;
        set(device, device_attributes::SerialNumber(), "S4");
        if (row.model) set(device, device_attributes::ModelNumber(), row.model);
        if (row.error) set(device, device_attributes::ErrorString(), row.error);
        core::DeviceManager drives;
        RequestDesk desk(drives, registry);
        std::ignore = desk.serve(request("List", ""));  // the scan
        drives.addDevice(device);
        const auto answer = desk.serve(request("List", products + selecting("SerialNumber", "S4")));
        EXPECT_EQ(answer->getObjects().front()->getProperties().at(2)->getAttribute("value"),
                  row.message);
    }
}

TEST_F(RequestDeskTest, PassesOverDrivesOfUnsupportedProductsWithoutAList) {
    EXPECT_EQ(servedDrives(R"(<Property name="SupportedProducts" value="Ashlade~Bexmere"/>)"),
              "S1S2");
    EXPECT_EQ(servedDrives(R"(<Property name="SupportedProducts" value="Elm"/>)"), "");
}

TEST_F(RequestDeskTest, ScansOnceAndWhenToldTo) {
    servedDrives("");
    servedDrives("");
    EXPECT_EQ(scans, 1);
    servedDrives(R"(<Property name="Scan" type="boolean" value="true"/>)");
    EXPECT_EQ(scans, 2);
    servedDrives(R"(<Property name="Scan" type="boolean" value="false"/>)");
    EXPECT_EQ(scans, 2);
}

TEST_F(RequestDeskTest, ScansAgainAfterAScanThatFailed) {
    servedDrives("");
    isScanBroken = true;
    EXPECT_EQ(statusOf(request("List", R"(<Property name="Scan" value="true"/>)")), Pair("1", "5"));
    isScanBroken = false;
    EXPECT_EQ(servedDrives(selecting("Index", "1")), "S2");
    EXPECT_EQ(scans, 3);
}

TEST_F(RequestDeskTest, TellsAStatusThatAJobThrows) {
    addJob("Throw", [](const Job&, auto&) -> Status { throw Status(10, 14, "thrown"); });
    EXPECT_EQ(statusOf(request("Throw", "")), Pair("10", "14"));
}

TEST_F(RequestDeskTest, TellsAnotherExceptionAsASystemError) {
    addJob("Throw", [](const Job&, auto&) -> Status { throw std::runtime_error("broken"); });
    EXPECT_EQ(serve(request("Throw", "")), R"(<Object category="Job" name="Throw">)"
                                           R"(<Property name="State" value="4"/>)"
                                           R"(<Property name="Progress" value="0"/>)"
                                           R"(<Object category="status">)"
                                           R"(<Property name="Category" value="1"/>)"
                                           R"(<Property name="Code" value="5"/>)"
                                           R"(<Property name="Message" value="broken"/>)"
                                           R"(</Object></Object>)");
}

/// A desk whose requests end as they are told to.
class FinishingDeskTest : public RequestDeskTest {
protected:
    std::string serveFinishing(const std::string& text) {
        auto answer = finishingDesk.serve(text);
        answer->removeAttribute("identifier");
        std::string written;
        answer->toXml(written);
        return written;
    }

    int ends = 0;
    Status end;
    bool throwsEnd = false;
    RequestDesk finishingDesk{manager, registry, [this] {
                                  ++ends;
                                  if (throwsEnd) throw end;
                                  return end;
                              }};
};

constexpr const char* NOTHING_KEPT = R"(<Object category="Job" name="List">)"
                                     R"(<Property name="State" value="7"/>)"
                                     R"(<Property name="Progress" value="0"/>)"
                                     R"(<Object category="status">)"
                                     R"(<Property name="Category" value="10"/>)"
                                     R"(<Property name="Code" value="168"/>)"
                                     R"(<Property name="Message" value="full"/>)"
                                     R"(</Object></Object>)";

TEST_F(FinishingDeskTest, FinishesEachRequestWhateverBecameOfIt) {
    addJob("Fail", [](const Job&, auto&) { return Status(10, 3, "no"); });
    addJob("Throw", [](const Job&, auto&) -> Status { throw Status(10, 14, "thrown"); });
    for (const char* job : {"List", "Fail", "Throw"})
        serveFinishing(request(job, ""));
    EXPECT_EQ(ends, 3);
}

TEST_F(FinishingDeskTest, FinishesNothingForARequestWithoutAJob) {
    serveFinishing("<");
    serveFinishing(request("Nothing", ""));
    EXPECT_EQ(ends, 0);
}

TEST_F(FinishingDeskTest, ARequestThatCannotBeFinishedHasThatStatusAndNoOutput) {
    end = Status(10, 168, "full");
    EXPECT_EQ(serveFinishing(request("List", "")), NOTHING_KEPT);
    throwsEnd = true;
    EXPECT_EQ(serveFinishing(request("List", "")), NOTHING_KEPT);
}

TEST_F(FinishingDeskTest, AFailureOfTheJobIsToldWithTheFailureToFinish) {
    addJob("Fail", [](const Job&, auto&) { return Status(10, 3, "no"); });
    end = Status(10, 168, "full");
    EXPECT_EQ(serveFinishing(request("Fail", "")), R"(<Object category="Job" name="Fail">)"
                                                   R"(<Property name="State" value="7"/>)"
                                                   R"(<Property name="Progress" value="0"/>)"
                                                   R"(<Object category="status">)"
                                                   R"(<Property name="Category" value="10"/>)"
                                                   R"(<Property name="Code" value="3"/>)"
                                                   R"(<Property name="Message" value="no full"/>)"
                                                   R"(</Object></Object>)");
}

TEST_F(FinishingDeskTest, FinishesARequestThatThrowsWhatIsNoException) {
    addJob("Throw", [](const Job&, auto&) -> Status { throw 7; });
    EXPECT_EQ(statusOf(request("Throw", "")), Pair("1", "5"));
    serveFinishing(request("Throw", ""));
    EXPECT_EQ(ends, 1);
}

}  // namespace
}  // namespace orvel::interfaces::orveli::library
