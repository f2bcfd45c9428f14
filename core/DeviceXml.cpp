// The XML forms of devices and of what is run on them: `XmlConverter`'s half above the catalogues.
#include "core/CommandHistory.h"
#include "core/CommandPath.h"
#include "core/CommandResult.h"
#include "core/Device.h"
#include "core/Strings.h"
#include "core/XmlConverter.h"
#include "core/xml/Vocabulary.h"
#include "core/xml/XmlList.h"

#include <boost/date_time/posix_time/posix_time.hpp>

#include <tuple>
#include <utility>

namespace orvel::core {

namespace {

constexpr const char* COMMAND_PATH_NAME = "commandPathName";
constexpr const char* TIMEOUT = "timeout";

template <class Element>
std::unique_ptr<Element> ofCategory(const char* category) {
    auto element = std::make_unique<Element>();
    element->setAttribute(xml::tags::Category, category);
    return element;
}

/// A property of a category of its own, which is its name too.
void addFact(xml::XmlObject& object, const char* category, const std::string& value) {
    object.addValue(category, value).setAttribute(xml::tags::Category, category);
}

void addPayload(xml::XmlObject& object, const char* category, const Payload& payload) {
    auto property = XmlConverter::toXml(payload);
    property->setAttribute(xml::tags::Category, category);
    object.addProperty(std::move(property));
}

/// Adds what a command or a protocol result says of itself. Only an object can be a child object.
void addChild(xml::XmlObject& object, std::unique_ptr<xml::XmlElement> child) {
    auto* childObject = dynamic_cast<xml::XmlObject*>(child.get());
    if (childObject == nullptr) return;
    std::ignore = child.release();
    object.addObject(std::unique_ptr<xml::XmlObject>(childObject));
}

}  // namespace

std::unique_ptr<xml::XmlObject> XmlConverter::toXml(const CommandPath& path) {
    auto object = ofCategory<xml::XmlObject>(xml::categories::CommandPath);
    object->addValue(xml::tags::Name, path.getName());
    object->addValue(TIMEOUT, strings::toString(path.getTimeout()));
    return object;
}

std::unique_ptr<xml::XmlList>
XmlConverter::toXml(const std::map<std::string, std::shared_ptr<CommandPath>>& paths) {
    auto list = ofCategory<xml::XmlList>(xml::categories::CommandPathList);
    for (const auto& [name, path] : paths)
        list->addObject(toXml(*path));
    return list;
}

std::unique_ptr<xml::XmlList>
XmlConverter::toXml(const std::map<std::string, std::string>& commandSets) {
    auto list = ofCategory<xml::XmlList>(xml::categories::CommandSetList);
    for (const auto& [setName, pathName] : commandSets) {
        auto& object = list->addObject(ofCategory<xml::XmlObject>(xml::categories::CommandSet));
        object.addValue(xml::tags::Name, setName);
        object.addValue(COMMAND_PATH_NAME, pathName);
    }
    return list;
}

std::unique_ptr<xml::XmlList> XmlConverter::toXml(const std::vector<Partition>& partitions) {
    auto list = ofCategory<xml::XmlList>(xml::categories::PartitionList);
    for (const Partition& partition : partitions) {
        auto& object = list->addObject(toXml(partition.getAttributes()));
        object.setAttribute(xml::tags::Category, xml::categories::Partition);
    }
    return list;
}

std::unique_ptr<xml::XmlObject> XmlConverter::toXml(const Device& device) {
    auto object = ofCategory<xml::XmlObject>(xml::categories::Device);
    object->addObject(toXml(device.getAttributes()));
    object->addList(toXml(device.getCommandSets()));
    object->addList(toXml(device.getCommandPaths()));
    object->addList(toXml(device.getPartitions()));
    return object;
}

std::unique_ptr<xml::XmlList>
XmlConverter::toXml(const std::vector<std::shared_ptr<Device>>& devices) {
    auto list = ofCategory<xml::XmlList>(xml::categories::DeviceList);
    for (const auto& device : devices)
        list->addObject(toXml(*device));
    return list;
}

std::unique_ptr<xml::XmlObject> XmlConverter::toXml(const CommandResult& result) {
    auto object = ofCategory<xml::XmlObject>(xml::categories::CommandResult);
    if (result.command) addChild(*object, result.command->toXml());
    if (result.protocolResult) addChild(*object, result.protocolResult->toXml());
    object->addObject(toXml(result.status));
    if (!result.quietToXml) {
        addPayload(*object, xml::categories::InputPayload, result.inputPayload);
        addPayload(*object, xml::categories::OutputPayload, result.outputPayload);
    }
    addFact(*object, xml::categories::QuietToXml, strings::toString(result.quietToXml));
    addFact(*object, xml::categories::StartTime,
            boost::posix_time::to_simple_string(result.startTime));
    addFact(*object, xml::categories::EndTime, boost::posix_time::to_simple_string(result.endTime));
    addFact(*object, xml::categories::Duration,
            boost::posix_time::to_simple_string(result.duration));
    if (result.commandPath) object->addObject(toXml(*result.commandPath));
    return object;
}

std::unique_ptr<xml::XmlList> XmlConverter::toXml(const CommandHistory& history) {
    auto list = ofCategory<xml::XmlList>(xml::categories::CommandHistory);
    CommandHistory rest = history;
    list->setAttribute(xml::tags::Size, std::to_string(rest.size()));
    list->setAttribute(xml::tags::MaxSize, strings::toString(rest.getMaxSize()));
    for (; rest.size() > 0; rest.pop())
        list->addObject(toXml(rest.front()));
    return list;
}

}  // namespace orvel::core
