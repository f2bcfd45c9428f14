// The data of a drive's answers to what the jobs make of them that decode structures and logs.
//
// An input is a byte of flags, a byte that chooses the job, and the data that the drive answers
// every command with.

#include "core/CommandPath.h"
#include "core/CommandResult.h"
#include "core/CoreStatuses.h"
#include "core/Device.h"
#include "core/XmlConverter.h"
#include "core/xml/XmlObject.h"
#include "fuzz/FuzzSupport.h"
#include "interfaces/orveli/jobs/AssertLogJob.h"
#include "interfaces/orveli/jobs/EventLogJob.h"
#include "interfaces/orveli/jobs/EyeDiagramJob.h"
#include "interfaces/orveli/jobs/GplJob.h"
#include "interfaces/orveli/jobs/HdaTemperatureJob.h"
#include "interfaces/orveli/jobs/IdentifyJob.h"
#include "interfaces/orveli/jobs/NlogJob.h"
#include "interfaces/orveli/jobs/NvmeLogJob.h"
#include "interfaces/orveli/jobs/PhyCountersJob.h"
#include "protocols/ata/AtaCommand.h"
#include "protocols/ata/Checksum.h"
#include "protocols/ata/ReturnedTaskFile.h"
#include "protocols/nvme/AdminCommand.h"
#include "protocols/nvme/CompletionEntry.h"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

namespace {

using orvel::core::CommandResult;
using orvel::core::Device;
using orvel::core::Payload;
using orvel::core::Status;
using orvel::core::XmlConverter;
using orvel::interfaces::orveli::Job;
namespace ata = orvel::protocols::ata;
namespace fuzz = tavik::fuzz;
namespace jobs = orvel::interfaces::orveli::jobs;
namespace nvme = orvel::protocols::nvme;
namespace xml = orvel::core::xml;

// The flags. The bits above them tell how many dwords further on in the data each answer starts
// than the one before.
constexpr unsigned FILLS_UP = 1U << 0;         // with zeroes, to what was asked for
constexpr unsigned MENDS_CHECKSUMS = 1U << 1;  // of each page of 512 bytes
constexpr unsigned STEP_SHIFT = 2;
constexpr unsigned STEP_UNIT = 4;

/// What a drive moves before it falls silent, so that a log of any length ends soon.
constexpr std::size_t LARGEST_SUM = 1UL << 18;

class AnsweringPath : public orvel::core::CommandPath {
public:
    static constexpr const char* NAME = "fuzz";

    AnsweringPath(unsigned flags, std::string_view data)
        : CommandPath(nullptr, NAME),
          flags(flags),
          data(data) {}

    Status checkPartitions() override { return orvel::core::statuses::deviceHasNoPartitions(); }

    std::unique_ptr<CommandPath> clone() const override {
        return std::make_unique<AnsweringPath>(flags, data);
    }

    bool isAvailable(Device&) override { return true; }

    CommandResult send(const orvel::core::Command& command, Payload input, Device&) override {
        CommandResult result;
        result.command = command.clone();
        result.inputPayload = input;
        const auto* const admin = dynamic_cast<const nvme::AdminCommand*>(&command);
        const std::uint32_t length =
            admin != nullptr ? admin->getFields().transferLength
                             : dynamic_cast<const ata::AtaCommand&>(command).getTransferLength();
        sum += length;
        if (sum > LARGEST_SUM) {
            result.status = orvel::core::statuses::noProtocolResultFromDriver();
            return result;
        }
        if (admin != nullptr) {
            result.protocolResult = std::make_unique<nvme::CompletionEntry>();
        } else {
            auto returned = std::make_unique<ata::ReturnedTaskFile>();
            returned->status = ata::status_bits::DRDY;
            result.protocolResult = std::move(returned);
        }
        result.outputPayload = answer(length);
        return result;
    }

private:
    Payload answer(std::uint32_t length) {
        const std::size_t start = std::min<std::size_t>(answers * step(), data.size());
        ++answers;
        const std::string_view rest = data.substr(start, length);
        Payload bytes((flags & FILLS_UP) != 0 ? length : static_cast<std::uint32_t>(rest.size()));
        std::copy(rest.begin(), rest.end(), bytes.data());
        constexpr std::uint32_t PAGE = 512;
        for (std::uint32_t page = 0; page < bytes.size() / PAGE; ++page) {
            if ((flags & MENDS_CHECKSUMS) != 0) ata::writeChecksum(bytes, page);
        }
        return bytes;
    }

    std::size_t step() const { return std::size_t{flags >> STEP_SHIFT} * STEP_UNIT; }

    unsigned flags;
    std::string_view data;
    std::size_t answers = 0;
    std::size_t sum = 0;
};

template <class JobType>
std::unique_ptr<Job> make() {
    return std::make_unique<JobType>();
}

struct Row {
    std::unique_ptr<Job> (*makeJob)();
    const char* commandSet;
    const char* request;
};

constexpr const char* NVME = nvme::ADMIN_COMMAND_SET;
constexpr const char* ATA = ata::AtaCommand::COMMAND_SET;

// clang-format off
constexpr Row ROWS[] = {
//   job                             drive request
    {&make<jobs::IdentifyJob>,       NVME, R"(<Object name="Identify" type="Method"/>)"},
    {&make<jobs::IdentifyJob>,       NVME, R"(<Object name="Identify" type="Method"><Property name="ControllerNamespaceStructure" value="2"/></Object>)"},
    {&make<jobs::IdentifyJob>,       NVME, R"(<Object name="Identify" type="Method"><Property name="ControllerNamespaceStructure" value="16"/></Object>)"},
    {&make<jobs::IdentifyJob>,       NVME, R"(<Object name="Identify" type="Method"><Property name="ControllerNamespaceStructure" value="17"/><Property name="NamespaceId" value="1"/></Object>)"},
    {&make<jobs::IdentifyJob>,       NVME, R"(<Object name="Identify" type="Method"><Property name="ControllerNamespaceStructure" value="18"/><Property name="NamespaceId" value="1"/></Object>)"},
    {&make<jobs::IdentifyJob>,       NVME, R"(<Object name="Identify" type="Method"><Property name="ControllerNamespaceStructure" value="19"/></Object>)"},
    {&make<jobs::IdentifyJob>,       ATA,  R"(<Object name="Identify" type="Method"/>)"},
    {&make<jobs::NvmeLogJob>,        NVME, R"(<Object name="NVMeLog" type="Method"><Property name="LogId" value="1"/></Object>)"},
    {&make<jobs::NvmeLogJob>,        NVME, R"(<Object name="NVMeLog" type="Method"><Property name="LogId" value="2"/></Object>)"},
    {&make<jobs::NvmeLogJob>,        NVME, R"(<Object name="NVMeLog" type="Method"><Property name="LogId" value="3"/></Object>)"},
    {&make<jobs::NvmeLogJob>,        NVME, R"(<Object name="NVMeLog" type="Method"><Property name="LogId" value="197"/></Object>)"},
    {&make<jobs::NvmeLogJob>,        NVME, R"(<Object name="NVMeLog" type="Method"><Property name="LogId" value="203"/></Object>)"},
    {&make<jobs::NvmeLogJob>,        NVME, R"(<Object name="NVMeLog" type="Method"/>)"},
    {&make<jobs::EyeDiagramJob>,     NVME, R"(<Object name="EyeDiagram" type="GetProperties"/>)"},
    {&make<jobs::EyeDiagramJob>,     NVME, R"(<Object name="EyeDiagram" type="GetProperties"><Property name="Group" value="B"/><Property name="Lane" value="1"/></Object>)"},
    {&make<jobs::NlogJob>,           NVME, R"(<Object name="Nlog" type="Method"/>)"},
    {&make<jobs::NlogJob>,           ATA,  R"(<Object name="Nlog" type="Method"/>)"},
    {&make<jobs::EventLogJob>,       NVME, R"(<Object name="EventLog" type="Method"/>)"},
    {&make<jobs::EventLogJob>,       ATA,  R"(<Object name="EventLog" type="Method"/>)"},
    {&make<jobs::AssertLogJob>,      NVME, R"(<Object name="AssertLog" type="Method"/>)"},
    {&make<jobs::AssertLogJob>,      ATA,  R"(<Object name="AssertLog" type="Method"/>)"},
    {&make<jobs::GplJob>,            ATA,  R"(<Object name="GPL" type="Method"><Property name="LogAddress" value="0"/></Object>)"},
    {&make<jobs::GplJob>,            ATA,  R"(<Object name="GPL" type="Method"><Property name="LogAddress" value="0x30"/><Property name="PageNum" value="2"/><Property name="SectorCount" value="130"/></Object>)"},
    {&make<jobs::HdaTemperatureJob>, ATA,  R"(<Object name="HDATemperature" type="Method"/>)"},
    {&make<jobs::PhyCountersJob>,    ATA,  R"(<Object name="PhyCounters" type="Method"/>)"},
};

// clang-format on

std::shared_ptr<Device> makeDrive(const char* commandSet, unsigned flags, std::string_view data) {
    auto device = std::make_shared<Device>();
    device->addCommandPath(std::make_shared<AnsweringPath>(flags, data));
    device->addCommandSet(commandSet, AnsweringPath::NAME);
    return device;
}

void checkAnswer(const xml::XmlElement& answer) {
    const auto* const output = dynamic_cast<const xml::XmlObject*>(&answer);
    fuzz::require(output != nullptr && output->getObjects().size() == 1,
                  "an answer is an object with one for the drive");
    const xml::XmlObject& drive = *output->getObjects().front();
    fuzz::require(!drive.getProperties().empty() || !drive.getObjects().empty(),
                  "the object of a drive isn't bare");
    const std::string text = answer.toString();
    const auto again = XmlConverter::toXml(text);
    fuzz::require(again != nullptr && again->toString() == text,
                  "an answer is text that reads as what was written");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    constexpr std::size_t HEAD = 2;
    if (size < HEAD) return 0;
    const Row& row = ROWS[data[1] % std::size(ROWS)];
    const std::string_view rest = fuzz::textOf(data, size).substr(HEAD);

    const auto job = row.makeJob();
    job->setRequest(XmlConverter::toXml(row.request));
    job->setDevices({makeDrive(row.commandSet, data[0], rest)});
    std::unique_ptr<xml::XmlElement> response;
    const Status status = job->run(response);
    fuzz::require(status.getCategory() == 0 || status.getCategory() == 10,
                  "a job's status is one of the core or of the features");
    fuzz::require((response != nullptr) == (status.getCode() == 0),
                  "a job has an answer or says why it has none");
    if (response != nullptr) checkAnswer(*response);
    return 0;
}
