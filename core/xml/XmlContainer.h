// What messages and objects have in common: children of all three kinds.
#pragma once

#include "core/xml/XmlElement.h"
#include "core/xml/XmlList.h"
#include "core/xml/XmlProperty.h"

#include <memory>
#include <vector>

namespace orvel::core::xml {

class XmlObject;

/// Properties are written first, then lists, then objects, each kind in insertion order.
class XmlContainer : public XmlElement {
public:
    ~XmlContainer() override;

    void toXml(std::string& text) const override;
    bool isEmpty() const override;

    // Each takes the element over and returns it in place.
    XmlList& addList(std::unique_ptr<XmlList> list);
    XmlProperty& addProperty(std::unique_ptr<XmlProperty> property);
    XmlObject& addObject(std::unique_ptr<XmlObject> object);

    const std::vector<std::unique_ptr<XmlList>>& getLists() const { return lists; }

    const std::vector<std::unique_ptr<XmlProperty>>& getProperties() const { return properties; }

    const std::vector<std::unique_ptr<XmlObject>>& getObjects() const { return objects; }

protected:
    explicit XmlContainer(std::string type);
    XmlContainer(const XmlContainer& other);

    void collect(const Query& query, Matches& found) const override;

    std::vector<std::unique_ptr<XmlList>> lists;
    std::vector<std::unique_ptr<XmlProperty>> properties;
    std::vector<std::unique_ptr<XmlObject>> objects;
};

}  // namespace orvel::core::xml
