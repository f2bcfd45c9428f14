// The request that one drive command sends: job, method type, device and properties as XML.
#pragma once

#include "core/Attribute.h"
#include "core/xml/XmlObject.h"

#include <string>

namespace tavik::norvossd {

/// Properties stand in the order of the calls that add them.
class DriveRequest {
public:
    /// Asks for a scan; selects one device unless `target` is empty.
    DriveRequest(const std::string& jobName, const std::string& methodType,
                 const std::string& target);

    /// Adds the attribute with its own value.
    void add(const orvel::core::Attribute& attribute);

    /// Adds `value` as it stands: the property keeps the size of the blank `descriptor`.
    void addAsTyped(const orvel::core::Attribute& descriptor, const std::string& value);

    /// Adds the attribute to the child object "Properties", which is made on first use.
    void select(const orvel::core::Attribute& attribute);

    orvel::core::xml::XmlObject& getObject() { return object; }

    const orvel::core::xml::XmlObject& getObject() const { return object; }

private:
    void selectDevice(const std::string& target);

    orvel::core::xml::XmlObject object;
    orvel::core::xml::XmlObject* selection = nullptr;  ///< "Properties", held by `object`
};

/// Adds `value` to `object` as a property made from the blank `descriptor`.
void addPropertyAsTyped(orvel::core::xml::XmlObject& object,
                        const orvel::core::Attribute& descriptor, const std::string& value);

}  // namespace tavik::norvossd
