// Renders command declarations: a full page for one, a list of usage lines for several.
#pragma once

#include "interfaces/cli/cliframework/CommandSpec.h"
#include "interfaces/cli/cliframework/ResultBase.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace cli::framework {

/// Text is wrapped to the width of the terminal on file descriptor 0, less 4 columns.
class HelpResult : public ResultBase {
public:
    std::string outputText() const override;
    std::string outputXml() const override;
    std::string outputEsxXml() const override;  ///< empty: this class has no such form
    std::string outputJson() const override;
    std::string outputCSV() const override;

    void push_back(CommandSpec spec);

    std::size_t getCount() const { return commands.size(); }

    /// Kept for `getShowFull`: the number of commands alone decides what is shown.
    void setShowFull(bool flag) { showFull = flag; }

    bool getShowFull() const { return showFull; }

    void setShouldWrap(bool flag) { shouldWrap = flag; }

private:
    std::string fullPage() const;
    std::string usageList() const;

    // Each appends its text to `text`.
    void wrapText(std::size_t indent, std::size_t width, std::string_view words,
                  std::string& text) const;
    void listToString(const std::vector<CommandPart>& parts, bool isProperty, std::size_t indent,
                      std::size_t width, std::string& text) const;

    std::vector<CommandSpec> commands;
    bool showFull = false;
    bool shouldWrap = true;
};

}  // namespace cli::framework
