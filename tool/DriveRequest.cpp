#include "tool/DriveRequest.h"

#include "core/AttributeTypes.h"
#include "core/Strings.h"
#include "core/XmlConverter.h"
#include "core/xml/Vocabulary.h"
#include "core/xml/XmlList.h"
#include "core/xml/XmlProperty.h"
#include "tool/DriveTarget.h"

#include <memory>
#include <utility>

namespace tavik::norvossd {

namespace {

using orvel::core::Attribute;
using orvel::core::XmlConverter;
namespace strings = orvel::core::strings;
namespace types = orvel::core::types;
namespace xml = orvel::core::xml;
namespace message = orvel::interfaces::orveli::xml::tags;

Attribute Scan() {
    return {"Scan", "Scan", types::boolean()};
}

/// The identifier that names a device by `target`, and the text that goes with it.
std::pair<std::string, std::string> identify(const std::string& target) {
    switch (kindOfTarget(target)) {
    case TargetKind::index:
        return {xml::identifiers::Index, target};
    case TargetKind::path:
        if (!strings::startsWith(target, "PHYSICALDRIVE", false)) {
            return {xml::identifiers::Path, target};
        }
        return {xml::identifiers::Path, R"(\\.\)" + target};
    case TargetKind::serialNumber:
        break;
    }
    return {xml::identifiers::SerialNumber, target};
}

}  // namespace

void addPropertyAsTyped(xml::XmlObject& object, const Attribute& descriptor,
                        const std::string& value) {
    auto property = XmlConverter::toXml(descriptor);
    property->setAttribute(xml::tags::Value, value);
    object.addProperty(std::move(property));
}

DriveRequest::DriveRequest(const std::string& jobName, const std::string& methodType,
                           const std::string& target) {
    object.setAttribute(xml::tags::Name, jobName);
    object.setAttribute(xml::tags::Type, methodType);
    addAsTyped(Scan(), "true");
    if (!target.empty()) selectDevice(target);
}

void DriveRequest::selectDevice(const std::string& target) {
    const auto [name, value] = identify(target);
    auto property = std::make_unique<xml::XmlProperty>();
    property->setAttribute(xml::tags::Category, xml::categories::Attribute);
    property->setAttribute(xml::tags::Type, types::string());
    property->setAttribute(xml::tags::Name, name);
    property->setAttribute(xml::tags::Value, value);

    auto device = std::make_unique<xml::XmlObject>();
    device->setAttribute(xml::tags::Name, xml::identifiers::Device);
    device->addProperty(std::move(property));

    auto devices = std::make_unique<xml::XmlList>();
    devices->setAttribute(xml::tags::Name, xml::identifiers::Devices);
    devices->addObject(std::move(device));
    object.addList(std::move(devices));
}

void DriveRequest::add(const Attribute& attribute) {
    object.addProperty(XmlConverter::toXml(attribute));
}

void DriveRequest::addAsTyped(const Attribute& descriptor, const std::string& value) {
    addPropertyAsTyped(object, descriptor, value);
}

void DriveRequest::select(const Attribute& attribute) {
    if (selection == nullptr) {
        selection = &object.addObject(std::make_unique<xml::XmlObject>());
        selection->setAttribute(xml::tags::Name, message::names::Properties);
    }
    selection->addProperty(XmlConverter::toXml(attribute));
}

}  // namespace tavik::norvossd
