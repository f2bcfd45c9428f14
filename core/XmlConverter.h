// Goes between XML text, the element tree, and the objects of the device core.
#pragma once

#include "core/Attribute.h"
#include "core/AttributeTable.h"
#include "core/Payload.h"
#include "core/Status.h"
#include "core/xml/XmlElement.h"
#include "core/xml/XmlList.h"
#include "core/xml/XmlObject.h"
#include "core/xml/XmlProperty.h"

#include <cstddef>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace orvel::core {

class CommandHistory;
class CommandPath;
class Device;
class Partition;
struct CommandResult;

class XmlConverter {
public:
    /// Deepest nesting that `toXml` reads. The XML reader and everything that walks a tree recurse,
    /// so deeper text counts as text that is no XML. The reader needs the most stack: some 420
    /// bytes a level, 2200 under the address sanitizer. So this depth fits a stack of 1 MB, or 8.
    static constexpr std::size_t MAX_DEPTH = 2048;

    /// Text to tree: the first element, with its attributes and the children that its class
    /// knows. Null, and an error line in the log, for text that is not well formed, nested deeper
    /// than `MAX_DEPTH`, or whose first element is none of the four.
    static std::unique_ptr<xml::XmlElement> toXml(const std::string& text);

    // Domain object to element.
    static std::unique_ptr<xml::XmlProperty> toXml(const Attribute& attribute);
    static std::unique_ptr<xml::XmlProperty> toXml(const Payload& payload);
    static std::unique_ptr<xml::XmlObject> toXml(const Status& status);
    static std::unique_ptr<xml::XmlObject> toXml(const AttributeTable& attributes);

    // The same for the types of the device half, in which these are defined (DeviceXml.cpp). No
    // pointer in the tables and lists may be null.
    static std::unique_ptr<xml::XmlObject> toXml(const CommandPath& path);
    static std::unique_ptr<xml::XmlList>
    toXml(const std::map<std::string, std::shared_ptr<CommandPath>>& paths);
    static std::unique_ptr<xml::XmlList>
    toXml(const std::map<std::string, std::string>& commandSets);
    static std::unique_ptr<xml::XmlList> toXml(const std::vector<Partition>& partitions);
    static std::unique_ptr<xml::XmlObject> toXml(const Device& device);
    static std::unique_ptr<xml::XmlList> toXml(const std::vector<std::shared_ptr<Device>>& devices);
    static std::unique_ptr<xml::XmlObject> toXml(const CommandResult& result);

    /// Oldest first, from a private copy.
    static std::unique_ptr<xml::XmlList> toXml(const CommandHistory& history);

    /// Nothing for a type word that is written but never read, or unknown.
    static std::optional<Attribute> toAttribute(const xml::XmlProperty& property);

    /// The attributes among the object's properties; of two with one name the later counts.
    static AttributeTable toAttributes(const xml::XmlObject& object);
};

}  // namespace orvel::core
