#include "interfaces/cli/cliframework/ErrorResult.h"

#include "interfaces/cli/cliframework/Logger.h"

#include <utility>

namespace cli::framework {

ErrorResult::ErrorResult(std::string detail) : ErrorResult(1, {}, std::move(detail)) {}

ErrorResult::ErrorResult(std::int32_t code, std::string message, std::string detail)
    : SimpleResult(std::move(message)),
      detail(std::move(detail)) {
    setErrorCode(code);
}

std::string ErrorResult::getErrorString() const {
    return getErrorCode() == SYNTAX_ERROR_CODE ? "Syntax Error" : "Error";
}

std::string ErrorResult::outputText() const {
    const std::string word = getErrorString();
    // Intended: no separator between the two in the log.
    logger.writeLine([this, &word] { return word + getText(); });

    std::string text;
    if (!detail.empty()) text = detail + ": ";
    return text + word + ": " + getText();
}

// Intended: the formats below call this class's own text, not the overridden one, so that a list
// of suggestions stays out of them.

std::string ErrorResult::outputXml() const {
    return "<Error Type=\"" + std::to_string(getErrorCode()) + "\">" + ErrorResult::outputText() +
           "</Error>\n";
}

std::string ErrorResult::outputJson() const {
    return "{\n\t\"Error_Type\":" + std::to_string(getErrorCode()) +
           ",\n\t\"Error_Description\":\"" + ErrorResult::outputText() + "\"\n}\n";
}

std::string ErrorResult::outputCSV() const {
    return "Error_Type," + std::to_string(getErrorCode()) + ",\nError_Description," +
           ErrorResult::outputText() + ",\n";
}

// Intended: the one format that does go through the virtual operation.
std::string ErrorResult::outputEsxXml() const {
    return "ERROR: " + outputText();
}

}  // namespace cli::framework
