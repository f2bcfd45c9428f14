// A flat, ordered list of name and value pairs under one name.
#pragma once

#include "interfaces/cli/cliframework/ResultBase.h"

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace cli::framework {

/// Copies share their cells.
class PropertyListResult : public ResultBase {
public:
    using Property = std::pair<std::string, std::shared_ptr<const ResultBase>>;
    using Properties = std::vector<Property>;

    std::string outputText() const override;
    std::string outputXml() const override;
    std::string outputEsxXml() const override;
    std::string outputJson() const override;
    std::string outputCSV() const override;

    void setName(std::string name);

    const std::string& getName() const { return root; }

    void insert(std::string key, std::string value);
    void insert(std::string key, std::shared_ptr<const ResultBase> cell);  ///< never null

    std::size_t getCount() const { return properties.size(); }

    /// Whether a property has this name, in any case.
    bool contains(std::string_view key) const;

    /// Text of the first property of this name, in any case; empty if there is none.
    std::string operator[](std::string_view key) const;

    Properties::const_iterator propertiesBegin() const { return properties.begin(); }

    Properties::const_iterator propertiesEnd() const { return properties.end(); }

private:
    Properties properties;
    std::string root = "Root";
};

}  // namespace cli::framework
