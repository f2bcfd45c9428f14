// A feature library's worth of code on the device tool-kit: one command, one path, one identifier,
// one finder and one job, for a drive that is four bytes of memory. docs/device-toolkit.md walks
// through it; a test runs it and compares what it prints.
#include "core/Command.h"
#include "core/CommandPath.h"
#include "core/CommandResult.h"
#include "core/CoreStatuses.h"
#include "core/Device.h"
#include "core/DeviceFinder.h"
#include "core/DeviceManager.h"
#include "core/Payload.h"
#include "core/ProductIdentifier.h"
#include "core/Status.h"
#include "core/Strings.h"
#include "core/XmlConverter.h"
#include "core/xml/Vocabulary.h"
#include "core/xml/XmlObject.h"
#include "features/DeviceAttributes.h"
#include "features/JobConstants.h"
#include "interfaces/orveli/interface/Job.h"

#include <cstdint>
#include <iostream>
#include <memory>
#include <string>
#include <utility>

namespace example {

namespace core = orvel::core;
namespace xml = orvel::core::xml;
namespace device_attributes = orvel::features::device_attributes;
namespace jobs = orvel::interfaces::orveli::jobs;

constexpr const char* SENSOR_SET = "Sensor";
constexpr const char* PATH_NAME = "Registers";

/// What can be asked: the word at an offset of the drive's registers.
class ReadRegister : public core::Command {
public:
    explicit ReadRegister(std::uint8_t offset)
        : Command(SENSOR_SET, "ReadRegister"),
          offset(offset) {}

    std::unique_ptr<Command> clone() const override {
        return std::make_unique<ReadRegister>(*this);
    }

    std::string toString() const override {
        return getName() + " at offset " + core::strings::toString(offset);
    }

    std::unique_ptr<xml::XmlElement> toXml() const override {
        auto object = std::make_unique<xml::XmlObject>();
        object->setAttribute(xml::tags::Category, xml::categories::Command);
        object->addValue("Offset", core::strings::toString(offset));
        return object;
    }

    const std::uint8_t offset;
};

/// The way there. A real path would have a connection and talk to a driver.
class RegisterPath : public core::CommandPath {
public:
    RegisterPath() : CommandPath(nullptr, PATH_NAME) {}

    core::Status checkPartitions() override { return core::statuses::deviceHasNoPartitions(); }

    std::unique_ptr<CommandPath> clone() const override {
        auto copy = std::make_unique<RegisterPath>();
        copy->assign(*this);
        return copy;
    }

    core::CommandResult send(const core::Command& command, core::Payload input,
                             core::Device&) override {
        core::CommandResult result;
        result.command = command.clone();
        result.inputPayload = input;
        const auto* read = dynamic_cast<const ReadRegister*>(&command);
        if (read == nullptr || read->offset + 2U > REGISTERS.size()) {
            result.status = core::statuses::requestOutOfBounds();
        } else {
            result.outputPayload = core::Payload(REGISTERS.at(read->offset), 2);
        }
        return result;
    }

    bool isAvailable(core::Device&) override { return true; }

private:
    /// Kelvin, and the highest that was seen; little-endian.
    static inline const core::Payload REGISTERS{"\x38\x01\x52\x01", 4};
};

/// What the drive is. The commands of a real one would ask the drive.
class NameGiver : public core::ProductIdentifier {
public:
    core::Status identify(core::Device& device) override {
        core::Attribute model = device_attributes::ModelNumber();
        model.setValue("NORVO TX1 4B");
        device.setAttribute(model);
        return {};
    }

    std::unique_ptr<ProductIdentifier> clone() const override {
        return std::make_unique<NameGiver>(*this);
    }
};

/// Where drives are: here, always one.
class OneDriveFinder : public core::DeviceFinder {
public:
    OneDriveFinder() : DeviceFinder("OneDrive") {}

    void find(core::Device::Devices& devices) override {
        auto device = std::make_shared<core::Device>();
        device->addCommandPath(std::make_shared<RegisterPath>());
        device->addCommandSet(SENSOR_SET, PATH_NAME);
        for (const auto& identifier : getProductIdentifiers())
            device->addProductIdentifier(*identifier);
        devices.push_back(device);
    }

    std::unique_ptr<DeviceFinder> clone() const override {
        return std::make_unique<OneDriveFinder>(*this);
    }
};

/// What a request runs: reads both registers of each selected drive.
class TemperatureJob : public orvel::interfaces::orveli::Job {
public:
    TemperatureJob() : Job(jobs::HDATemperature) {}

    std::unique_ptr<Job> clone() const override {
        auto copy = std::make_unique<TemperatureJob>();
        copy->assign(*this);
        return copy;
    }

    bool supports(const core::Device& device) const override {
        return device.supportsCommandSet(SENSOR_SET);
    }

    core::Status runGetProperties(std::unique_ptr<xml::XmlElement>& response) override {
        auto output = std::make_unique<xml::XmlObject>();
        output->setAttribute(xml::tags::Category, "output");
        for (const auto& device : getDevices()) {
            auto& drive = output->addObject(std::make_unique<xml::XmlObject>());
            drive.addValue("Model", device->readText(device_attributes::ModelNumber()));
            drive.addValue("Kelvin", read(*device, 0));
            drive.addValue("HighestKelvin", read(*device, 2));
        }
        response = std::move(output);
        return {};
    }

private:
    static std::string read(core::Device& device, std::uint8_t offset) {
        const core::CommandResult result = device.sendCommand(ReadRegister(offset));
        if (!(result.status == core::statuses::completedSuccessfully()))
            return result.status.getMessage();
        const core::Payload& bytes = result.outputPayload;
        return core::strings::toString(*bytes.at(0) + 256 * *bytes.at(1));
    }
};

}  // namespace example

int main() {
    using namespace example;

    core::DeviceManager manager;
    manager.addDeviceFinder(OneDriveFinder());
    manager.addProductIdentifier(NameGiver());
    manager.setIdentifyOnScan(true);
    manager.scan();

    const auto device = manager.GetDevice(core::Attribute(xml::identifiers::Index, "0"));
    if (!device) return 1;

    TemperatureJob job;
    job.setDevices({device});
    job.setRequest(core::XmlConverter::toXml(
        R"(<Object name="HDATemperature" type="GetProperties"></Object>)"));
    std::unique_ptr<xml::XmlElement> response;
    std::cout << job.run(response).toString() << "\n\n";
    if (response) std::cout << response->toString() << "\n\n";
    std::cout << device->getCommandHistory().back().toString();
}
