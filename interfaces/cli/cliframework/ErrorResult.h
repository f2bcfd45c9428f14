// A failure as a result: its code becomes the exit status.
#pragma once

#include "interfaces/cli/cliframework/SimpleResult.h"

#include <cstdint>
#include <string>

namespace cli::framework {

/// The text is the message; any code may be set, and only `SYNTAX_ERROR_CODE` changes how it
/// prints.
class ErrorResult : public SimpleResult {
public:
    static constexpr std::int32_t SYNTAX_ERROR_CODE = 201;

    /// Code 1, no message.
    explicit ErrorResult(std::string detail);

    /// `detail`, when not empty, is written ahead of the error word.
    ErrorResult(std::int32_t code, std::string message, std::string detail = {});

    std::string outputText() const override;
    std::string outputXml() const override;
    std::string outputEsxXml() const override;
    std::string outputJson() const override;
    std::string outputCSV() const override;

    /// "Syntax Error" for `SYNTAX_ERROR_CODE`, otherwise "Error".
    std::string getErrorString() const;

private:
    std::string detail;
};

}  // namespace cli::framework
