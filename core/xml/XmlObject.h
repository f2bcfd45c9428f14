// The element that stands for a thing: a request, an answer, a drive, a status.
#pragma once

#include "core/xml/XmlContainer.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace orvel::core::xml {

class XmlObject : public XmlContainer {
public:
    static constexpr const char* _type = "Object";

    XmlObject();

    /// Sets the three as attributes of the object itself.
    XmlObject(const std::string& name, const std::string& description, const std::string& value);

    using XmlContainer::addProperty;

    /// Adds a property with these three attributes, empty ones included.
    XmlProperty& addProperty(const std::string& name, const std::string& description,
                             const std::string& value);

    /// Adds a property with these two attributes.
    XmlProperty& addValue(const std::string& name, const std::string& value);

    /// Erases the first property of this name (case matters); false if there is none.
    bool removeProperty(const std::string& name);

    /// For each name, erases the first property of it in this object and in every child object,
    /// to any depth. Lists are not entered.
    void removeProperties(const std::vector<std::string>& names);

    std::unique_ptr<XmlElement> clone() const override;

private:
    /// How often each name is to be erased from every object; the keys are the caller's.
    using Removals = std::unordered_map<std::string_view, std::size_t>;

    void apply(const Removals& removals);
};

}  // namespace orvel::core::xml
