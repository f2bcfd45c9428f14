#include "core/AttributeTable.h"

#include <utility>

namespace orvel::core {

void AttributeTable::set(Attribute attribute) {
    const auto [place, isNew] = places.try_emplace(attribute.getName(), attributes.size());
    if (isNew) {
        attributes.push_back(std::move(attribute));
    } else {
        attributes[place->second] = std::move(attribute);
    }
}

const Attribute* AttributeTable::find(const std::string& name) const {
    const auto place = places.find(name);
    return place == places.end() ? nullptr : &attributes[place->second];
}

bool AttributeTable::remove(const std::string& name) {
    const auto place = places.find(name);
    if (place == places.end()) return false;
    const std::size_t index = place->second;
    places.erase(place);
    attributes.erase(attributes.begin() + static_cast<std::ptrdiff_t>(index));
    for (auto& [otherName, otherIndex] : places) {
        if (otherIndex > index) --otherIndex;
    }
    return true;
}

void AttributeTable::clear() {
    attributes.clear();
    places.clear();
}

}  // namespace orvel::core
