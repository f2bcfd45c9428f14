// Several objects of one kind, each a property list under a key.
#pragma once

#include "interfaces/cli/cliframework/PropertyListResult.h"
#include "interfaces/cli/cliframework/ResultBase.h"

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

namespace cli::framework {

class ObjectListResult : public ResultBase {
public:
    using Entry = std::pair<std::string, PropertyListResult>;
    using Entries = std::vector<Entry>;

    std::string outputText() const override;
    std::string outputXml() const override;
    std::string outputEsxXml() const override;
    std::string outputTextTable() const override;  ///< columns, after the first entry's properties
    std::string outputJson() const override;
    std::string outputCSV() const override;

    void setRoot(std::string name);

    /// Names the caller's list after `key` and appends a copy, which shares its cells.
    void insert(const std::string& key, PropertyListResult& list);

    std::size_t getCount() const { return entries.size(); }

    Entries::const_iterator begin() const { return entries.begin(); }

    Entries::const_iterator end() const { return entries.end(); }

private:
    /// One width for each property of the first entry, which must be there.
    std::vector<std::size_t> columnWidths() const;

    Entries entries;
    std::string root = "Root";
};

}  // namespace cli::framework
