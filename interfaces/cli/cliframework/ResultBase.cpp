#include "interfaces/cli/cliframework/ResultBase.h"

#include <cstdarg>
#include <cstddef>
#include <cstdio>

namespace cli::framework {

std::string ResultBase::outputTextTable() const {
    return outputText();
}

bool ResultBase::setOutputOption(const std::map<std::string, std::string>& options) {
    const auto option = options.find("-output");
    if (option == options.end()) return true;

    struct Format {
        const char* word;
        OutputType type;
    };

    constexpr Format FORMATS[] = {
        {OUTPUT_NVMXML, OutputType::nvmxml}, {OUTPUT_TEXT, OutputType::text},
        {OUTPUT_ESX, OutputType::esx},       {OUTPUT_JSON, OutputType::json},
        {OUTPUT_CSV, OutputType::csv},
    };
    for (const Format& format : FORMATS) {
        if (stringsIEqual(option->second, format.word)) {
            outputType = format.type;
            return true;
        }
    }
    return false;
}

std::string ResultBase::output() const {
    switch (outputType) {
    // clang-format off
    case OutputType::text:      return outputText();
    case OutputType::nvmxml:    return outputXml();
    case OutputType::esx:       return outputEsxXml();
    case OutputType::textTable: return outputTextTable();
    case OutputType::json:      return outputJson();
    case OutputType::csv:       return outputCSV();
        // clang-format on
    }
    return {};
}

std::string stringFormat(const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    va_list measuring;
    va_copy(measuring, arguments);
    const int length = std::vsnprintf(nullptr, 0, format, measuring);
    va_end(measuring);
    std::string text;
    if (length > 0) {
        text.resize(static_cast<std::size_t>(length) + 1);
        std::vsnprintf(text.data(), text.size(), format, arguments);
        text.pop_back();
    }
    va_end(arguments);
    return text;
}

}  // namespace cli::framework
