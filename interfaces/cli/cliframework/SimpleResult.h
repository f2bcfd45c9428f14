// The smallest result: one text. Also the cell of every property in the larger results.
#pragma once

#include "interfaces/cli/cliframework/ResultBase.h"

#include <string>

namespace cli::framework {

class SimpleResult : public ResultBase {
public:
    explicit SimpleResult(std::string text);

    std::string outputText() const override;
    std::string outputXml() const override;
    std::string outputEsxXml() const override;
    std::string outputJson() const override;
    std::string outputCSV() const override;

    const std::string& getText() const { return text; }

private:
    std::string text;
};

}  // namespace cli::framework
