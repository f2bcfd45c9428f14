// A hash table of attributes, keyed by name.
#pragma once

#include "core/Attribute.h"

#include <cstddef>
#include <string>
#include <unordered_map>
#include <vector>

namespace orvel::core {

/// Iterates in the order in which the names first came in, so that what is written from a table
/// has one order on every machine.
class AttributeTable {
public:
    using const_iterator = std::vector<Attribute>::const_iterator;

    /// Adds or replaces; a replaced attribute keeps its place.
    void set(Attribute attribute);

    /// The attribute of this name, or null.
    const Attribute* find(const std::string& name) const;

    bool contains(const std::string& name) const { return find(name) != nullptr; }

    /// False if there was none of this name.
    bool remove(const std::string& name);
    void clear();

    std::size_t size() const { return attributes.size(); }

    bool empty() const { return attributes.empty(); }

    const_iterator begin() const { return attributes.begin(); }

    const_iterator end() const { return attributes.end(); }

private:
    std::vector<Attribute> attributes;
    std::unordered_map<std::string, std::size_t> places;  ///< name to index in `attributes`
};

}  // namespace orvel::core
