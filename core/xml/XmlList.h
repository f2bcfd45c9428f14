// A list of objects.
#pragma once

#include "core/xml/XmlElement.h"

#include <memory>
#include <vector>

namespace orvel::core::xml {

class XmlObject;

class XmlList : public XmlElement {
public:
    static constexpr const char* _type = "List";

    XmlList();
    XmlList(const XmlList& other);
    XmlList& operator=(const XmlList&) = delete;
    ~XmlList() override;

    void toXml(std::string& text) const override;
    std::unique_ptr<XmlElement> clone() const override;
    bool isEmpty() const override;

    /// Takes the object over and returns it in place.
    XmlObject& addObject(std::unique_ptr<XmlObject> object);

    const std::vector<std::unique_ptr<XmlObject>>& getObjects() const { return objects; }

protected:
    void collect(const Query& query, Matches& found) const override;

private:
    std::vector<std::unique_ptr<XmlObject>> objects;
};

}  // namespace orvel::core::xml
