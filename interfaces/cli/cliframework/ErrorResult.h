// A failure as a result: its code becomes the exit status.
#pragma once

#include "interfaces/cli/cliframework/SimpleResult.h"

#include <cstdint>
#include <string>

namespace cli::framework {

class ErrorResult : public SimpleResult {
public:
    /// Code 1, no message.
    explicit ErrorResult(std::string detail);

    /// `detail`, when not empty, is written ahead of the error word.
    ErrorResult(std::int32_t code, std::string message, std::string detail = {});

    std::string outputText() const override;
    std::string outputXml() const override;
    std::string outputEsxXml() const override;
    std::string outputJson() const override;
    std::string outputCSV() const override;

    /// "Syntax Error" for code 201, otherwise "Error".
    std::string getErrorString() const;

private:
    std::string detail;
};

}  // namespace cli::framework
