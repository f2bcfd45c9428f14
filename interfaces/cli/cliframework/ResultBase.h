// The root of all results: what a command answers, and how it renders itself.
#pragma once

#include "interfaces/cli/cliframework/CliFrameworkTypes.h"

#include <cstdint>
#include <map>
#include <string>

namespace cli::framework {

/// A result owns all of its text: it is printed after the features and the feature library are
/// gone. No format escapes values or names.
class ResultBase {
public:
    ResultBase() = default;
    virtual ~ResultBase() = default;

    virtual std::string outputText() const = 0;
    virtual std::string outputXml() const = 0;
    virtual std::string outputEsxXml() const = 0;
    virtual std::string outputTextTable() const;
    virtual std::string outputJson() const = 0;
    virtual std::string outputCSV() const = 0;

    void setOutputType(OutputType type) { outputType = type; }

    OutputType getOutputType() const { return outputType; }

    /// The code that the process ends with.
    void setErrorCode(std::int32_t code) { errorCode = code; }

    std::int32_t getErrorCode() const { return errorCode; }

    /// Takes the output type from the value of "-output"; false if the value names no format,
    /// which leaves the type as it was.
    bool setOutputOption(const std::map<std::string, std::string>& options);

    /// The text in the format of the output type; empty for a number that is no type.
    std::string output() const;

protected:
    ResultBase(const ResultBase&) = default;
    ResultBase& operator=(const ResultBase&) = default;

private:
    std::int32_t errorCode = 0;
    OutputType outputType = OutputType::text;
};

/// printf-style text of any length.
[[gnu::format(printf, 1, 2)]] std::string stringFormat(const char* format, ...);

}  // namespace cli::framework
