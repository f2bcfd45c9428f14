// One named object: ordered properties and ordered child objects, to any depth.
#pragma once

#include "interfaces/cli/cliframework/ResultBase.h"

#include <concepts>
#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace cli::framework {

/// Duplicate names are kept and nothing is sorted. Rendering shares the indentation `tab` and so
/// is not re-entrant.
class ObjectResult : public ResultBase {
public:
    using Property = std::pair<std::string, std::unique_ptr<ResultBase>>;
    using Properties = std::vector<Property>;
    using Children = std::vector<std::unique_ptr<ObjectResult>>;

    ObjectResult() = default;
    explicit ObjectResult(std::string root);

    std::string outputText() const override;
    std::string outputXml() const override;
    std::string outputEsxXml() const override;  ///< empty: this class has no such form
    std::string outputJson() const override;
    std::string outputCSV() const override;

    /// Appends `list` to `stream` as JSON members, `prefix` in front of each name. The last one
    /// has a comma behind it if this object has children.
    void OutputPropertyJson(const Properties& list, std::string_view prefix,
                            std::string& stream) const;

    void setRoot(std::string name);

    std::string getRoot() const { return root; }

    /// Makes room, for those who know how much will come.
    void reserve(std::size_t propertyCount, std::size_t childCount);

    // A child or a cell is never null.

    /// Appends a child, which `key` renames.
    template <std::derived_from<ObjectResult> Child>
    void insert(const std::string& key, std::unique_ptr<Child> child) {
        appendChild(key, std::move(child));
    }

    void insert(std::string key, std::string value);
    void insert(std::string key, std::unique_ptr<ResultBase> cell);

    /// Number of children, not of properties.
    std::size_t getCount() const { return children.size(); }

    /// Whether a property has this name, in any case.
    bool contains(std::string_view key) const;

    Children::const_iterator childrenBegin() const { return children.begin(); }

    Children::const_iterator childrenEnd() const { return children.end(); }

    Properties::const_iterator propertiesBegin() const { return properties.begin(); }

    Properties::const_iterator propertiesEnd() const { return properties.end(); }

    static std::string tab;  ///< indentation of the object being rendered

private:
    using Writer = void (ObjectResult::*)(std::string& text) const;
    using Operation = std::string (ObjectResult::*)() const;

    void appendChild(const std::string& key, std::unique_ptr<ObjectResult> child);

    // Each appends this object to `text`, in the form of the operation of its name.
    void writeText(std::string& text) const;
    void writeXml(std::string& text) const;
    void writeJson(std::string& text) const;
    void writeCsv(std::string& text) const;

    /// Appends what the virtual `operation` of `child` gives; `writer` is its form in this class.
    static void writeChild(const ObjectResult& child, Writer writer, Operation operation,
                           std::string& text);

    std::string root;
    Children children;
    Properties properties;
};

}  // namespace cli::framework
