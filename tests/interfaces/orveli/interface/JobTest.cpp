// The steps of a run, its checks and what is kept of it.
#include "interfaces/orveli/interface/Job.h"

#include "core/Payload.h"
#include "core/XmlConverter.h"
#include "core/xml/XmlList.h"
#include "core/xml/XmlMessage.h"
#include "core/xml/XmlObject.h"
#include "tests/support/LogCapture.h"

#include <boost/date_time/posix_time/posix_time_types.hpp>
#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

namespace orvel::interfaces::orveli {
namespace {

using boost::posix_time::ptime;
using core::Attribute;
using core::AttributeTable;
using core::Device;
using core::Payload;
using core::Status;
using core::XmlConverter;
using core::xml::XmlElement;
using core::xml::XmlObject;
using tavik::testing::LogCapture;

using Bytes = std::vector<std::uint8_t>;
using Texts = std::vector<std::string>;
using Holder = std::unique_ptr<XmlElement>;

const Texts NO_LINES;

/// 7 May 2024, 08:09 and some seconds.
ptime atSecond(int second) {
    return {boost::gregorian::date(2024, 5, 7), boost::posix_time::time_duration(8, 9, second)};
}

Bytes bytesOf(const Payload& payload) {
    return {payload.data(), payload.data() + payload.size()};
}

Status failure() {
    return {10, 93, "Failed on purpose."};
}

/// All of a status: its comparison leaves the message out.
std::string textOf(const Status& status) {
    return std::to_string(status.getCategory()) + "/" + std::to_string(status.getCode()) + " " +
           status.getMessage();
}

constexpr const char* SUCCESS = "0/0 Completed successfully.";
constexpr const char* FAILURE = "10/93 Failed on purpose.";
constexpr const char* NOT_SUPPORTED = "10/34 The desired feature is not supported.";
constexpr const char* INVALID_JOB_NAME = "11/3 Invalid job name";
constexpr const char* INVALID_METHOD_TYPE = "11/5 Invalid method type";

Holder request(const std::string& attributes, const std::string& children = "") {
    return XmlConverter::toXml("<Object " + attributes + ">" + children + "</Object>");
}

/// A request for the job "Identify".
Holder requestOf(const std::string& type) {
    return request(R"(name="Identify" type=")" + type + R"(")");
}

constexpr const char* ONE_PROPERTY = R"(<Property name="Temperature" type="uint16" value="515"/>)";

Holder setRequestOf(const std::string& properties) {
    return request(R"(name="Identify" type="SetProperty")",
                   R"(<Object name="Properties">)" + properties + "</Object>");
}

/// A request that isn't read from text has attributes and children of any kind.
std::unique_ptr<XmlObject> objectNamed(const std::string& name) {
    auto object = std::make_unique<XmlObject>();
    object->setAttribute("name", name);
    return object;
}

Device::Devices devices(std::size_t count) {
    Device::Devices list;
    for (std::size_t i = 0; i < count; ++i)
        list.push_back(std::make_shared<Device>());
    return list;
}

/// Overrides nothing that needn't be.
class PlainJob : public Job {
public:
    using Job::Job;

    std::unique_ptr<Job> clone() const override { return std::make_unique<PlainJob>(getName()); }

    bool supports(const Device&) const override { return true; }

    using Job::setFirstFlag;
    using Job::setProgress;
    using Job::setSecondFlag;
};

/// Writes down what `run` calls, and does and returns what it is told to.
class NotingJob : public PlainJob {
public:
    explicit NotingJob(const std::string& name = "Identify") : PlainJob(name, &tick) {
        running = this;
        ticks = 0;
    }

    ~NotingJob() override { running = nullptr; }

    NotingJob(const NotingJob&) = delete;
    NotingJob& operator=(const NotingJob&) = delete;

    std::unique_ptr<Job> clone() const override {
        ADD_FAILURE() << "cloned";
        return nullptr;
    }

    bool supports(const Device&) const override {
        ADD_FAILURE() << "asked";
        return false;
    }

    Status runMethod(Holder& response) override { return note("runMethod", response); }

    Status runGetProperties(Holder& response) override {
        return note("runGetProperties", response);
    }

    Status runSetProperty(const Attribute& property) override {
        properties.push_back(property);
        Holder none;
        return note("runSetProperty", none);
    }

    Texts diary;
    std::vector<Attribute> properties;
    std::function<void(Holder&)> work;
    Status outcome;

private:
    /// A second later at each call.
    static ptime tick() {
        running->diary.push_back("clock in state " + std::to_string(running->getState()));
        return atSecond(ticks++);
    }

    Status note(const std::string& operation, Holder& response) {
        diary.push_back(operation + " in state " + std::to_string(getState()));
        if (work) work(response);
        return outcome;
    }

    static inline NotingJob* running = nullptr;  ///< the one that the clock writes for
    static inline int ticks = 0;
};

Status runJob(Job& job) {
    Holder response;
    return job.run(response);
}

// A new job.

TEST(Job, BeginsWithoutRequestDevicesTimesOrProgress) {
    const PlainJob job("Identify");
    EXPECT_EQ(job.getName(), "Identify");
    EXPECT_EQ(job.getRequest(), nullptr);
    EXPECT_TRUE(job.getDevices().empty());
    EXPECT_EQ(textOf(job.getStatus()), SUCCESS);
    EXPECT_EQ(job.getState(), 0);
    EXPECT_EQ(job.getProgress(), 0);
    EXPECT_TRUE(job.getStartTime().is_not_a_date_time());
    EXPECT_TRUE(job.getEndTime().is_not_a_date_time());
}

TEST(Job, ReadsTheFlagsThatAConcreteJobSets) {
    PlainJob job("Identify");
    EXPECT_EQ(job.getFirstFlag(), 0);
    EXPECT_EQ(job.getSecondFlag(), 0);
    job.setFirstFlag(1);
    job.setSecondFlag(255);
    EXPECT_EQ(job.getFirstFlag(), 1);
    EXPECT_EQ(job.getSecondFlag(), 255);
}

TEST(Job, LeavesTheFlagsAndTheProgressAloneWhenItRuns) {
    PlainJob job("Identify");
    job.setFirstFlag(3);
    job.setSecondFlag(4);
    job.setProgress(50);
    job.setRequest(requestOf("Method"));
    EXPECT_EQ(textOf(runJob(job)), NOT_SUPPORTED);
    EXPECT_EQ(job.getFirstFlag(), 3);
    EXPECT_EQ(job.getSecondFlag(), 4);
    EXPECT_EQ(job.getProgress(), 50);
}

TEST(Job, TakesItsRequestAndDevices) {
    PlainJob job("Identify");
    Holder element = requestOf("Method");
    const XmlElement* place = element.get();
    const Device::Devices list = devices(2);
    job.setRequest(std::move(element));
    job.setDevices(list);
    EXPECT_EQ(job.getRequest(), place);
    EXPECT_EQ(job.getDevices(), list);
    job.setRequest(nullptr);
    EXPECT_EQ(job.getRequest(), nullptr);
}

TEST(Job, KeepsAStateOfItsOwner) {
    PlainJob job("Identify");
    job.setState(-3);
    EXPECT_EQ(job.getState(), -3);
}

TEST(Job, KeepsAStatusThatItIsGiven) {
    PlainJob job("Identify");
    job.setStatus(failure());
    EXPECT_EQ(textOf(job.getStatus()), FAILURE);
}

TEST(Job, TakesTheTimeFromTheSystemsClockInUtc) {
    PlainJob job("Identify");
    const ptime before = boost::posix_time::microsec_clock::universal_time();
    EXPECT_EQ(runJob(job).getCode(), 2);
    const ptime after = boost::posix_time::microsec_clock::universal_time();
    EXPECT_LE(before, job.getStartTime());
    EXPECT_LE(job.getStartTime(), job.getEndTime());
    EXPECT_LE(job.getEndTime(), after);
}

// The steps of a run.

TEST(Job, RunsStepByStepFromState4To7) {
    NotingJob job;
    job.setRequest(requestOf("Method"));
    EXPECT_EQ(textOf(runJob(job)), SUCCESS);
    EXPECT_EQ(job.diary, Texts({"clock in state 4", "runMethod in state 4", "clock in state 4"}));
    EXPECT_EQ(job.getState(), 7);
}

TEST(Job, KeepsStartAndEndTime) {
    NotingJob job;
    job.setRequest(requestOf("Method"));
    job.work = [&](Holder&) {
        EXPECT_EQ(job.getStartTime(), atSecond(0));
        EXPECT_TRUE(job.getEndTime().is_not_a_date_time());
    };
    EXPECT_EQ(textOf(runJob(job)), SUCCESS);
    EXPECT_EQ(job.getStartTime(), atSecond(0));
    EXPECT_EQ(job.getEndTime(), atSecond(1));
}

TEST(Job, KeepsTheOutcomeOnceItHasRun) {
    NotingJob job;
    job.setRequest(requestOf("Method"));
    job.outcome = failure();
    job.work = [&](Holder&) { EXPECT_EQ(textOf(job.getStatus()), SUCCESS); };
    EXPECT_EQ(textOf(runJob(job)), FAILURE);
    EXPECT_EQ(textOf(job.getStatus()), FAILURE);
}

TEST(Job, OverwritesWhatAnEarlierRunLeft) {
    NotingJob job;
    job.setRequest(requestOf("Method"));
    job.outcome = failure();
    EXPECT_EQ(textOf(runJob(job)), FAILURE);

    job.outcome = Status();
    job.work = [&](Holder&) {
        EXPECT_EQ(job.getState(), 4);
        EXPECT_EQ(job.getStartTime(), atSecond(2));
        EXPECT_EQ(job.getEndTime(), atSecond(1));
        EXPECT_EQ(textOf(job.getStatus()), FAILURE);
    };
    EXPECT_EQ(textOf(runJob(job)), SUCCESS);
    EXPECT_EQ(job.getState(), 7);
    EXPECT_EQ(job.getStartTime(), atSecond(2));
    EXPECT_EQ(job.getEndTime(), atSecond(3));
    EXPECT_EQ(textOf(job.getStatus()), SUCCESS);
}

TEST(Job, EndsWithoutARequestInCode2) {
    NotingJob job;
    const LogCapture log;
    EXPECT_EQ(textOf(runJob(job)), "11/2 No input XML");
    EXPECT_EQ(textOf(job.getStatus()), "11/2 No input XML");
    EXPECT_EQ(job.diary, Texts({"clock in state 4", "clock in state 4"}));
    EXPECT_EQ(job.getState(), 7);
    EXPECT_EQ(job.getStartTime(), atSecond(0));
    EXPECT_EQ(job.getEndTime(), atSecond(1));
    EXPECT_EQ(log.lines(),
              Texts({"[debug] Job.cpp run: Entering", "[debug] Job.cpp run: Exiting"}));
}

TEST(Job, LogsTypeAndNameOfTheRequestWithinItsTrace) {
    NotingJob job;
    job.setRequest(requestOf("Method"));
    job.work = [](Holder&) {
        EXPECT_EQ(LogCapture::lines(),
                  Texts({"[debug] Job.cpp run: Entering", "[info] Job.cpp run: Type = Method",
                         "[info] Job.cpp run: Method Name = Identify"}));
    };
    const LogCapture log;
    EXPECT_EQ(textOf(runJob(job)), SUCCESS);
    EXPECT_EQ(
        log.lines(),
        Texts({"[debug] Job.cpp run: Entering", "[info] Job.cpp run: Type = Method",
               "[info] Job.cpp run: Method Name = Identify", "[debug] Job.cpp run: Exiting"}));
}

TEST(Job, TracesTheEntryWithALineNumberAndTheExitWithout) {
    NotingJob job;
    const LogCapture log;
    EXPECT_EQ(runJob(job).getCode(), 2);
    const Texts lines = log.lines(true);
    ASSERT_EQ(lines.size(), 2U);
    EXPECT_TRUE(lines[0].starts_with("[debug] Job.cpp("));
    EXPECT_TRUE(lines[0].ends_with(") run: Entering"));
    EXPECT_EQ(lines[1], "[debug] Job.cpp run: Exiting");
}

TEST(Job, AddsTheAttributesThatTheRequestLacksAsEmpty) {
    struct Row {
        const char* attributes;
        const char* expected;
        Texts lines;
    };

    const Row rows[] = {
        {"", R"(<Object name="" type=""></Object>)", {"Type = ", "Method Name = "}},
        {R"(value="1")",
         R"(<Object name="" type="" value="1"></Object>)",
         {"Type = ", "Method Name = "}},
        {R"(type="Method")",
         R"(<Object name="" type="Method"></Object>)",
         {"Type = Method", "Method Name = "}},
        {R"(name="Other")",
         R"(<Object name="Other" type=""></Object>)",
         {"Type = ", "Method Name = Other"}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.attributes);
        NotingJob job;
        job.setRequest(request(row.attributes));
        const LogCapture log;
        EXPECT_EQ(textOf(runJob(job)), INVALID_JOB_NAME);
        EXPECT_EQ(job.getRequest()->toString(),
                  std::string(R"(<?xml version="1.0" encoding="utf-8"?>)") + row.expected);
        EXPECT_EQ(log.lines(),
                  Texts({"[debug] Job.cpp run: Entering", "[info] Job.cpp run: " + row.lines[0],
                         "[info] Job.cpp run: " + row.lines[1], "[debug] Job.cpp run: Exiting"}));
    }
}

TEST(Job, LeavesACompleteRequestAsItIs) {
    NotingJob job;
    job.setDevices(devices(1));
    job.setRequest(setRequestOf(ONE_PROPERTY));
    EXPECT_EQ(textOf(runJob(job)), SUCCESS);
    EXPECT_EQ(
        job.getRequest()->toString(),
        R"(<?xml version="1.0" encoding="utf-8"?><Object name="Identify" type="SetProperty">)"
        R"(<Object name="Properties"><Property name="Temperature" type="uint16" value="515"/>)"
        R"(</Object></Object>)");
}

TEST(Job, RefusesARequestForAnotherJobWhateverItsType) {
    for (const char* name : {"", "identify", "IDENTIFY", "Identify ", "Identif", "SMART"}) {
        for (const char* type : {"Method", "GetProperties", "SetProperty", "Parser"}) {
            SCOPED_TRACE(std::string(name) + " " + type);
            NotingJob job;
            job.setDevices(devices(1));
            job.setRequest(request("name=\"" + std::string(name) + "\" type=\"" + type + "\""));
            EXPECT_EQ(textOf(runJob(job)), INVALID_JOB_NAME);
            EXPECT_EQ(job.diary, Texts({"clock in state 4", "clock in state 4"}));
            EXPECT_EQ(job.getState(), 7);
        }
    }
}

TEST(Job, RefusesATypeThatItDoesNotKnow) {
    for (const char* type : {"Parser", "", "method", "METHOD", "Method ", "Methods",
                             "getProperties", "GetProperty", "SetProperties", "setproperty"}) {
        SCOPED_TRACE(type);
        NotingJob job;
        job.setDevices(devices(1));
        job.setRequest(requestOf(type));
        EXPECT_EQ(textOf(runJob(job)), INVALID_METHOD_TYPE);
        EXPECT_EQ(job.diary, Texts({"clock in state 4", "clock in state 4"}));
        EXPECT_EQ(job.getState(), 7);
    }
}

TEST(Job, RunsAMethodWithAnyNumberOfDevices) {
    for (const std::size_t count : {0, 1, 2}) {
        SCOPED_TRACE(count);
        NotingJob job;
        job.setDevices(devices(count));
        job.setRequest(requestOf("Method"));
        job.outcome = failure();
        EXPECT_EQ(textOf(runJob(job)), FAILURE);
    }
}

TEST(Job, CountsAnAnswerOfAMethodAsSuccess) {
    const auto empty = [] { return std::make_unique<XmlObject>(); };
    const auto filled = [] { return objectNamed("answer"); };
    const auto withChild = [] {
        auto object = std::make_unique<XmlObject>();
        object->addObject(std::make_unique<XmlObject>());
        return object;
    };
    const auto emptyList = [] { return std::make_unique<core::xml::XmlList>(); };

    struct Row {
        const char* text;
        Status outcome;
        std::function<Holder()> before;
        std::function<void(Holder&)> work;
        const char* expected;
    };

    const auto none = [] { return Holder(); };
    const Row rows[] = {
        {"failed, no answer", failure(), none, {}, FAILURE},
        {"failed, empty answer", failure(), none, [&](Holder& r) { r = empty(); }, FAILURE},
        {"failed, empty list", failure(), none, [&](Holder& r) { r = emptyList(); }, FAILURE},
        {"failed, answer", failure(), none, [&](Holder& r) { r = filled(); }, SUCCESS},
        {"failed, answer of one child", failure(), none, [&](Holder& r) { r = withChild(); },
         SUCCESS},
        {"failed, caller's empty element", failure(), empty, {}, FAILURE},
        {"failed, caller's element filled", failure(), empty,
         [](Holder& r) { r->setAttribute("name", ""); }, SUCCESS},
        {"failed, caller's element was full", failure(), filled, {}, SUCCESS},
        {"failed, caller's element emptied", failure(), filled,
         [](Holder& r) { r->clearAttributes(); }, FAILURE},
        {"failed, caller's element taken away", failure(), filled, [](Holder& r) { r.reset(); },
         FAILURE},
        {"succeeded, no answer", Status(), none, {}, SUCCESS},
        {"succeeded, answer", Status(), none, [&](Holder& r) { r = filled(); }, SUCCESS},
        {"message of its own, no answer", Status(0, 0, "Done."), none, {}, "0/0 Done."},
        {"message of its own, answer", Status(0, 0, "Done."), none,
         [&](Holder& r) { r = filled(); }, SUCCESS},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        NotingJob job;
        job.setRequest(requestOf("Method"));
        job.outcome = row.outcome;
        job.work = row.work;
        Holder response = row.before();
        EXPECT_EQ(textOf(job.run(response)), row.expected);
        EXPECT_EQ(textOf(job.getStatus()), row.expected);
    }
}

TEST(Job, HandsTheMethodsAnswerToTheCaller) {
    NotingJob job;
    job.setRequest(requestOf("Method"));
    job.work = [](Holder& response) { response = objectNamed("answer"); };
    Holder response;
    EXPECT_EQ(textOf(job.run(response)), SUCCESS);
    ASSERT_NE(response, nullptr);
    EXPECT_EQ(response->getAttribute("name"), "answer");
}

TEST(Job, CountsEveryGetPropertiesAsSuccess) {
    for (const bool answers : {false, true}) {
        for (const bool fails : {false, true}) {
            SCOPED_TRACE(std::to_string(answers) + std::to_string(fails));
            NotingJob job;
            job.setRequest(requestOf("GetProperties"));
            if (fails) job.outcome = failure();
            if (answers) job.work = [](Holder& response) { response = objectNamed("answer"); };
            Holder response;
            EXPECT_EQ(textOf(job.run(response)), SUCCESS);
            EXPECT_EQ(textOf(job.getStatus()), SUCCESS);
            EXPECT_EQ(job.diary, Texts({"clock in state 4", "runGetProperties in state 4",
                                        "clock in state 4"}));
            EXPECT_EQ(response != nullptr, answers);
        }
    }
}

// Setting a property.

TEST(Job, SetsAPropertyOfOneDevice) {
    NotingJob job;
    job.setDevices(devices(1));
    job.setRequest(setRequestOf(
        R"(<Property name="Temperature" displayName="Drive Temperature" type="uint16" value="515"/>)"));
    const LogCapture log;
    EXPECT_EQ(textOf(runJob(job)), SUCCESS);
    EXPECT_EQ(job.diary,
              Texts({"clock in state 4", "runSetProperty in state 4", "clock in state 4"}));
    ASSERT_EQ(job.properties.size(), 1U);
    EXPECT_EQ(job.properties[0].getName(), "Temperature");
    EXPECT_EQ(job.properties[0].getDisplayName(), "Drive Temperature");
    EXPECT_EQ(job.properties[0].getType(), "uint16");
    EXPECT_EQ(bytesOf(job.properties[0].getPayload()), Bytes({3, 2}));
    EXPECT_EQ(
        log.lines(),
        Texts({"[debug] Job.cpp run: Entering", "[info] Job.cpp run: Type = SetProperty",
               "[info] Job.cpp run: Method Name = Identify", "[debug] Job.cpp run: Exiting"}));
}

TEST(Job, EndsInTheOutcomeOfSettingTheProperty) {
    NotingJob job;
    job.setDevices(devices(1));
    job.setRequest(setRequestOf(ONE_PROPERTY));
    job.outcome = failure();
    Holder response = objectNamed("answer");
    EXPECT_EQ(textOf(job.run(response)), FAILURE);
    EXPECT_EQ(textOf(job.getStatus()), FAILURE);
}

TEST(Job, SetsNothingWithoutExactlyOneDevice) {
    struct Row {
        std::size_t count;
        const char* expected;
    };

    const Row rows[] = {{0, "10/5 No device selected."},
                        {2, "10/6 Multiple devices selected."},
                        {3, "10/6 Multiple devices selected."}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.count);
        NotingJob job;
        job.setDevices(devices(row.count));
        job.setRequest(setRequestOf(""));
        const LogCapture log;
        EXPECT_EQ(textOf(runJob(job)), row.expected);
        EXPECT_EQ(job.diary, Texts({"clock in state 4", "clock in state 4"}));
        // Nothing about properties: they aren't read.
        EXPECT_EQ(
            log.lines(),
            Texts({"[debug] Job.cpp run: Entering", "[info] Job.cpp run: Type = SetProperty",
                   "[info] Job.cpp run: Method Name = Identify", "[debug] Job.cpp run: Exiting"}));
    }
}

struct PropertiesRow {
    const char* text;
    const char* children;  ///< of the request
    const char* line;
    const char* expected;
};

constexpr const char* TOO_MANY = "10/37 Too many properties specified for this feature.";
constexpr const char* NONE = "10/38 No properties specified for this feature.";
constexpr const char* NO_VALUE = "10/39 No value associated with specified property.";

// clang-format off
const PropertiesRow REFUSED_PROPERTIES[] = {
    {"two", R"(<Object name="Properties"><Property name="A" type="string" value="1"/>)"
            R"(<Property name="B" type="string" value="2"/></Object>)",
     "Too many properties", TOO_MANY},
    {"three", R"(<Object name="Properties"><Property name="A" type="string" value="1"/>)"
              R"(<Property name="B" type="uint8" value="2"/>)"
              R"(<Property name="C" type="boolean" value="true"/></Object>)",
     "Too many properties", TOO_MANY},
    {"two without a value", R"(<Object name="Properties"><Property name="A" type="bytepointer"/>)"
                            R"(<Property name="B" type="bytepointer"/></Object>)",
     "Too many properties", TOO_MANY},
    {"names that differ in case", R"(<Object name="Properties"><Property name="A" type="string"/>)"
                                  R"(<Property name="a" type="string"/></Object>)",
     "Too many properties", TOO_MANY},
    {"no child", "",
     "No properties found", NONE},
    {"empty child", R"(<Object name="Properties"></Object>)",
     "No properties found", NONE},
    {"unknown type", R"(<Object name="Properties"><Property name="A" type="float" value="1"/></Object>)",
     "No properties found", NONE},
    {"type that is never read", R"(<Object name="Properties"><Property name="A" type="ulong" value="1"/></Object>)",
     "No properties found", NONE},
    {"no type", R"(<Object name="Properties"><Property name="A" value="1"/></Object>)",
     "No properties found", NONE},
    {"child of another name", R"(<Object name="properties"><Property name="A" type="string" value="1"/></Object>)",
     "No properties found", NONE},
    {"list of that name", R"(<List name="Properties"><Object><Property name="A" type="string" value="1"/></Object></List>)",
     "No properties found", NONE},
    {"direct property", R"(<Property name="A" type="string" value="1"/>)",
     "No properties found", NONE},
    {"property of a deeper object", R"(<Object name="Properties"><Object><Property name="A" type="string" value="1"/></Object></Object>)",
     "No properties found", NONE},
    {"deeper child of that name", R"(<Object name="More"><Object name="Properties"><Property name="A" type="string" value="1"/></Object></Object>)",
     "No properties found", NONE},
    {"no bytes", R"(<Object name="Properties"><Property name="A" type="bytepointer" value=""/></Object>)",
     "Property has no value", NO_VALUE},
    {"no bytes for want of a value", R"(<Object name="Properties"><Property name="A" type="list_uint64"/></Object>)",
     "Property has no value", NO_VALUE},
    {"no bytes behind the prefix", R"(<Object name="Properties"><Property name="A" type="hexValue" value="0x"/></Object>)",
     "Property has no value", NO_VALUE},
};

// clang-format on

TEST(Job, SetsNothingWithoutExactlyOnePropertyThatHasAValue) {
    for (const PropertiesRow& row : REFUSED_PROPERTIES) {
        SCOPED_TRACE(row.text);
        NotingJob job;
        job.setDevices(devices(1));
        job.setRequest(request(R"(name="Identify" type="SetProperty")", row.children));
        const LogCapture log;
        EXPECT_EQ(textOf(runJob(job)), row.expected);
        EXPECT_EQ(textOf(job.getStatus()), row.expected);
        EXPECT_EQ(job.diary, Texts({"clock in state 4", "clock in state 4"}));
        EXPECT_EQ(log.lines(),
                  Texts({"[debug] Job.cpp run: Entering", "[info] Job.cpp run: Type = SetProperty",
                         "[info] Job.cpp run: Method Name = Identify",
                         std::string("[info] Job.cpp getRequestedSetProperties: ") + row.line,
                         "[debug] Job.cpp run: Exiting"}));
    }
}

TEST(Job, ReadsTheOnePropertyOfASetRequest) {
    struct Row {
        const char* text;
        const char* children;  ///< of the request
        const char* name;
        Bytes value;
    };

    // clang-format off
    const Row rows[] = {
        {"text", R"(<Object name="Properties"><Property name="A" type="string" value="xy"/></Object>)",
         "A", {'x', 'y', 0}},
        {"empty text, whose value is its NUL", R"(<Object name="Properties"><Property name="A" type="string" value=""/></Object>)",
         "A", {0}},
        {"text for want of a value", R"(<Object name="Properties"><Property name="A" type="string"/></Object>)",
         "A", {0}},
        {"number for want of a value", R"(<Object name="Properties"><Property name="A" type="uint8"/></Object>)",
         "A", {0}},
        {"boolean", R"(<Object name="Properties"><Property name="A" type="boolean" value="True"/></Object>)",
         "A", {1}},
        {"beside an unknown type", R"(<Object name="Properties"><Property name="A" type="float" value="1"/>)"
                                   R"(<Property name="B" type="uint8" value="2"/></Object>)",
         "B", {2}},
        {"equal names, the later counts", R"(<Object name="Properties"><Property name="A" type="uint8" value="1"/>)"
                                          R"(<Property name="A" type="uint8" value="2"/></Object>)",
         "A", {2}},
        {"the first child of that name", R"(<Object name="Other"><Property name="X" type="uint8" value="9"/></Object>)"
                                         R"(<Object name="Properties"><Property name="A" type="uint8" value="1"/></Object>)"
                                         R"(<Object name="Properties"><Property name="B" type="uint8" value="2"/></Object>)",
         "A", {1}},
        {"no name", R"(<Object name="Properties"><Property type="uint8" value="7"/></Object>)",
         "", {7}},
    };
    // clang-format on
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        PlainJob job("Identify");
        job.setRequest(request(R"(name="Identify")", row.children));
        AttributeTable table;
        const LogCapture log;
        EXPECT_EQ(textOf(job.getRequestedSetProperties(table)), SUCCESS);
        ASSERT_EQ(table.size(), 1U);
        EXPECT_EQ(table.begin()->getName(), row.name);
        EXPECT_EQ(bytesOf(table.begin()->getPayload()), row.value);
        EXPECT_EQ(log.lines(), NO_LINES);
    }
}

TEST(Job, ReplacesWhatTheTableHeldByTheRequestedProperties) {
    struct Row {
        const char* properties;
        Texts names;
        int code;
    };

    const Row rows[] = {
        {"", {}, 38},
        {R"(<Property name="A" type="uint8" value="1"/>)", {"A"}, 0},
        {R"(<Property name="A" type="bytepointer" value=""/>)", {"A"}, 39},
        {R"(<Property name="A" type="uint8"/><Property name="B" type="uint8"/>)", {"A", "B"}, 37},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.properties);
        PlainJob job("Identify");
        job.setRequest(setRequestOf(row.properties));
        AttributeTable table;
        table.set(Attribute("Old", "1"));
        EXPECT_EQ(job.getRequestedSetProperties(table).getCode(), row.code);
        Texts names;
        for (const Attribute& attribute : table)
            names.push_back(attribute.getName());
        EXPECT_EQ(names, row.names);
    }
}

TEST(Job, HasNoRequestedPropertiesWithoutARequest) {
    const PlainJob job("Identify");
    AttributeTable table;
    table.set(Attribute("Old", "1"));
    const LogCapture log;
    EXPECT_EQ(textOf(job.getRequestedSetProperties(table)), NONE);
    EXPECT_TRUE(table.empty());
    EXPECT_EQ(log.lines(),
              Texts({"[info] Job.cpp getRequestedSetProperties: No properties found"}));
}

TEST(Job, ReadsThePropertiesOfAMessage) {
    auto message = std::make_unique<core::xml::XmlMessage>();
    message->addObject(objectNamed("Properties"))
        .addProperty("A", "", "1")
        .setAttribute("type", "uint8");
    PlainJob job("Identify");
    job.setRequest(std::move(message));
    AttributeTable table;
    EXPECT_EQ(textOf(job.getRequestedSetProperties(table)), SUCCESS);
    EXPECT_EQ(table.size(), 1U);
}

TEST(Job, FindsNoPropertiesInAProperty) {
    PlainJob job("Identify");
    job.setRequest(XmlConverter::toXml(R"(<Property name="Properties" type="uint8" value="1"/>)"));
    AttributeTable table;
    EXPECT_EQ(textOf(job.getRequestedSetProperties(table)), NONE);
}

// Operations that throw, and operations that a job hasn't.

TEST(Job, LetsAnExceptionThroughAndStaysInState4) {
    for (const char* type : {"Method", "GetProperties", "SetProperty"}) {
        SCOPED_TRACE(type);
        NotingJob job;
        job.setDevices(devices(1));
        job.setRequest(setRequestOf(ONE_PROPERTY));
        job.outcome = failure();
        EXPECT_EQ(textOf(runJob(job)), FAILURE);

        job.setRequest(
            request(std::string(R"(name="Identify" type=")") + type + "\"",
                    std::string(R"(<Object name="Properties">)") + ONE_PROPERTY + "</Object>"));
        job.work = [](Holder&) { throw std::runtime_error("drive gone"); };
        const LogCapture log;
        try {
            EXPECT_EQ(textOf(runJob(job)), "");
            FAIL() << "nothing thrown";
        } catch (const std::runtime_error& error) {
            EXPECT_STREQ(error.what(), "drive gone");
        }
        EXPECT_EQ(job.getState(), 4);
        EXPECT_EQ(job.getStartTime(), atSecond(2));
        EXPECT_EQ(job.getEndTime(), atSecond(1));
        EXPECT_EQ(textOf(job.getStatus()), FAILURE);
        EXPECT_EQ(log.lines(), Texts({"[debug] Job.cpp run: Entering",
                                      std::string("[info] Job.cpp run: Type = ") + type,
                                      "[info] Job.cpp run: Method Name = Identify",
                                      "[debug] Job.cpp run: Exiting"}));
    }
}

TEST(Job, RunsAgainAfterAnException) {
    NotingJob job;
    job.setRequest(requestOf("Method"));
    job.work = [](Holder&) { throw std::runtime_error("drive gone"); };
    EXPECT_THROW(std::ignore = runJob(job), std::runtime_error);
    job.work = {};
    EXPECT_EQ(textOf(runJob(job)), SUCCESS);
    EXPECT_EQ(job.getState(), 7);
    EXPECT_EQ(job.getStartTime(), atSecond(1));
    EXPECT_EQ(job.getEndTime(), atSecond(2));
}

TEST(Job, DoesNotSupportWhatItDoesNotOverride) {
    struct Row {
        const char* type;
        const char* expected;
    };

    const Row rows[] = {
        {"Method", NOT_SUPPORTED}, {"GetProperties", SUCCESS}, {"SetProperty", NOT_SUPPORTED}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.type);
        PlainJob job("Identify");
        job.setDevices(devices(1));
        job.setRequest(
            request(std::string(R"(name="Identify" type=")") + row.type + "\"",
                    std::string(R"(<Object name="Properties">)") + ONE_PROPERTY + "</Object>"));
        Holder response;
        EXPECT_EQ(textOf(job.run(response)), row.expected);
        EXPECT_EQ(response, nullptr);
    }
}

TEST(Job, AnswersByDefaultThatAnOperationIsNotSupported) {
    PlainJob job("Identify");
    Holder response;
    EXPECT_EQ(textOf(job.runMethod(response)), NOT_SUPPORTED);
    EXPECT_EQ(textOf(job.runGetProperties(response)), NOT_SUPPORTED);
    EXPECT_EQ(textOf(job.runSetProperty(Attribute("A", "1"))), NOT_SUPPORTED);
}

// Copying.

TEST(Job, AssignTakesStatusRequestAndDevices) {
    PlainJob other("Other");
    const Device::Devices list = devices(2);
    other.setStatus(failure());
    other.setRequest(requestOf("Method"));
    other.setDevices(list);
    PlainJob job("Identify");
    job.setRequest(requestOf("Parser"));
    job.setDevices(devices(1));

    job.assign(other);

    EXPECT_EQ(textOf(job.getStatus()), FAILURE);
    ASSERT_NE(job.getRequest(), nullptr);
    EXPECT_NE(job.getRequest(), other.getRequest());
    EXPECT_EQ(
        job.getRequest()->toString(),
        R"(<?xml version="1.0" encoding="utf-8"?><Object name="Identify" type="Method"></Object>)");
    EXPECT_EQ(job.getDevices(), list);
}

TEST(Job, AssignLeavesTheOtherAsItWas) {
    PlainJob other("Other");
    other.setStatus(failure());
    other.setRequest(requestOf("Method"));
    other.setDevices(devices(2));
    PlainJob job("Identify");
    job.assign(other);
    job.setStatus(Status());
    job.setDevices({});
    job.setRequest(nullptr);
    EXPECT_EQ(textOf(other.getStatus()), FAILURE);
    EXPECT_NE(other.getRequest(), nullptr);
    EXPECT_EQ(other.getDevices().size(), 2U);
}

TEST(Job, AssignKeepsTheRequestIfTheOtherHasNone) {
    const PlainJob other("Other");
    PlainJob job("Identify");
    job.setRequest(requestOf("Method"));
    job.setDevices(devices(1));
    const XmlElement* place = job.getRequest();
    job.assign(other);
    EXPECT_EQ(job.getRequest(), place);
    EXPECT_TRUE(job.getDevices().empty());
}

TEST(Job, AssignTakesNothingElse) {
    NotingJob other("Other");
    other.setProgress(50);
    other.setFirstFlag(1);
    other.setSecondFlag(1);
    EXPECT_EQ(runJob(other).getCode(), 2);
    PlainJob job("Identify");
    job.setState(5);
    job.assign(other);
    EXPECT_EQ(job.getName(), "Identify");
    EXPECT_EQ(job.getState(), 5);
    EXPECT_EQ(job.getProgress(), 0);
    EXPECT_EQ(job.getFirstFlag(), 0);
    EXPECT_EQ(job.getSecondFlag(), 0);
    EXPECT_TRUE(job.getStartTime().is_not_a_date_time());
    EXPECT_TRUE(job.getEndTime().is_not_a_date_time());
}

TEST(Job, AssignToItselfChangesNothing) {
    PlainJob job("Identify");
    job.setStatus(failure());
    job.setRequest(requestOf("Method"));
    job.setDevices(devices(1));
    job.assign(job);
    EXPECT_EQ(textOf(job.getStatus()), FAILURE);
    EXPECT_EQ(job.getRequest()->getAttribute("type"), "Method");
    EXPECT_EQ(job.getDevices().size(), 1U);
}

// XML and progress.

/// Decimal digits of the job's place in memory.
std::string placeOf(const Job& job) {
    return std::to_string(reinterpret_cast<std::uintptr_t>(&job));
}

TEST(Job, WritesItselfAsXml) {
    PlainJob job("SMART");
    job.setState(-12);
    job.setProgress(255);
    job.setStatus(Status(10, 93, "Failed & gone."));
    EXPECT_EQ(job.toXml()->toString(),
              R"(<?xml version="1.0" encoding="utf-8"?>)"
              R"(<Object category="Job" identifier=")" +
                  placeOf(job) +
                  R"(" name="SMART">)"
                  R"(<Property name="State" value="-12"/>)"
                  R"(<Property name="Progress" value="255"/>)"
                  R"(<Object category="status">)"
                  R"(<Property name="Category" value="10"/>)"
                  R"(<Property name="Code" value="93"/>)"
                  R"(<Property name="Message" value="Failed &amp; gone."/>)"
                  R"(</Object></Object>)");
}

TEST(Job, WritesItselfAsXmlAfterARun) {
    NotingJob job;
    EXPECT_EQ(runJob(job).getCode(), 2);
    EXPECT_EQ(job.toXml()->toString(), R"(<?xml version="1.0" encoding="utf-8"?>)"
                                       R"(<Object category="Job" identifier=")" +
                                           placeOf(job) +
                                           R"(" name="Identify">)"
                                           R"(<Property name="State" value="7"/>)"
                                           R"(<Property name="Progress" value="0"/>)"
                                           R"(<Object category="status">)"
                                           R"(<Property name="Category" value="11"/>)"
                                           R"(<Property name="Code" value="2"/>)"
                                           R"(<Property name="Message" value="No input XML"/>)"
                                           R"(</Object></Object>)");
}

/// What the callback was given last.
struct Report {
    int calls = 0;
    std::uint32_t context = 0;
    std::uint64_t identifier = 0;
    std::string text;

    void take(std::uint32_t newContext, std::uint64_t newIdentifier, Holder* job) {
        ++calls;
        context = newContext;
        identifier = newIdentifier;
        text = (*job)->toString();
    }
};

class JobProgress : public ::testing::Test {
protected:
    void SetUp() override { report = Report(); }

    static void noteProgress(std::uint32_t context, std::uint64_t identifier, Holder* job) {
        report.take(context, identifier, job);
    }

    static void noteElsewhere(std::uint32_t, std::uint64_t, Holder*) { ++callsElsewhere; }

    static inline Report report;
    static inline int callsElsewhere = 0;
};

TEST_F(JobProgress, IsReportedToTheCallback) {
    PlainJob job("Identify");
    job.setProgressCallback(&noteProgress, 0xFFFFFFFE);
    job.setProgress(50);
    job.setState(4);
    job.reportProgress();
    EXPECT_EQ(report.calls, 1);
    EXPECT_EQ(report.context, 4294967294U);
    EXPECT_EQ(report.identifier, reinterpret_cast<std::uintptr_t>(&job));
    EXPECT_EQ(report.text, R"(<?xml version="1.0" encoding="utf-8"?>)"
                           R"(<Object category="Job" identifier=")" +
                               placeOf(job) +
                               R"(" name="Identify">)"
                               R"(<Property name="State" value="4"/>)"
                               R"(<Property name="Progress" value="50"/>)"
                               R"(<Object category="status">)"
                               R"(<Property name="Category" value="0"/>)"
                               R"(<Property name="Code" value="0"/>)"
                               R"(<Property name="Message" value="Completed successfully."/>)"
                               R"(</Object></Object>)");
}

TEST_F(JobProgress, IsReportedByThePointerToAJob) {
    PlainJob job("Identify");
    job.setProgressCallback(&noteProgress, 1);
    reportProgress(&job);
    EXPECT_EQ(report.calls, 1);
    EXPECT_EQ(report.context, 1U);
}

TEST_F(JobProgress, IsReportedToNobodyWithoutACallback) {
    PlainJob job("Identify");
    job.reportProgress();
    job.setProgressCallback(nullptr, 1);
    job.reportProgress();
    EXPECT_EQ(report.calls, 0);
}

TEST_F(JobProgress, IsNoLongerReportedOnceTheCallbackIsNull) {
    PlainJob job("Identify");
    job.setProgressCallback(&noteProgress, 1);
    job.reportProgress();
    job.setProgressCallback(nullptr, 1);
    job.reportProgress();
    EXPECT_EQ(report.calls, 1);
}

TEST_F(JobProgress, IsReportedToTheCallbackThatWasSetLast) {
    PlainJob job("Identify");
    callsElsewhere = 0;
    job.setProgressCallback(&noteElsewhere, 1);
    job.setProgressCallback(&noteProgress, 2);
    job.reportProgress();
    EXPECT_EQ(callsElsewhere, 0);
    EXPECT_EQ(report.context, 2U);
}

TEST_F(JobProgress, IsNotReportedByTheRunItself) {
    NotingJob job;
    job.setProgressCallback(&noteProgress, 1);
    job.setRequest(requestOf("Method"));
    EXPECT_EQ(textOf(runJob(job)), SUCCESS);
    EXPECT_EQ(report.calls, 0);
}

TEST_F(JobProgress, IsReportedFromWithinAnOperation) {
    NotingJob job;
    job.setProgressCallback(&noteProgress, 1);
    job.setRequest(requestOf("Method"));
    job.work = [&](Holder&) { job.reportProgress(); };
    EXPECT_EQ(textOf(runJob(job)), SUCCESS);
    EXPECT_EQ(report.calls, 1);
    EXPECT_NE(report.text.find(R"(<Property name="State" value="4"/>)"), std::string::npos);
}

// The free functions.

TEST(Job, HasItsStatusSetThroughAPointer) {
    PlainJob job("Identify");
    setStatus(&job, failure());
    EXPECT_EQ(textOf(job.getStatus()), FAILURE);
}

TEST(Job, MayBeAbsent) {
    // Nothing to see afterwards: without a job the calls must just come back.
    setStatus(nullptr, failure());
    reportProgress(nullptr);
}

}  // namespace
}  // namespace orvel::interfaces::orveli
