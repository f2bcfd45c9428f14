#include "interfaces/cli/cliframework/Lexer.h"

#include "interfaces/cli/cliframework/Logger.h"
#include "interfaces/cli/cliframework/TraceObject.h"

#include <algorithm>
#include <cstddef>
#include <string_view>
#include <utility>

namespace cli::framework {

namespace {

/// Pieces of the caller's words, which outlive them.
using Items = std::vector<std::string_view>;

void prependMissingDashes(std::vector<std::string>& vocabulary) {
    for (std::string& entry : vocabulary) {
        if (!entry.starts_with('-')) entry.insert(0, 1, '-');
    }
}

Items cutAtEqualsSigns(const std::vector<std::string>& words) {
    Items items;
    items.reserve(words.size());
    for (const std::string_view word : words) {
        const std::size_t equals = word.find('=');
        if (equals == std::string_view::npos || equals == 0) {
            items.push_back(word);
            continue;
        }
        items.push_back(word.substr(0, equals));
        items.push_back(word.substr(equals, 1));
        items.push_back(word.substr(equals + 1));
    }
    return items;
}

/// Empty items vanish here.
Items cutAtCommas(const Items& items) {
    Items pieces;
    pieces.reserve(items.size());
    for (std::string_view rest : items) {
        for (std::size_t comma = rest.find(','); comma != std::string_view::npos;
             comma = rest.find(',')) {
            if (comma > 0) pieces.push_back(rest.substr(0, comma));
            pieces.push_back(rest.substr(comma, 1));
            rest.remove_prefix(comma + 1);
        }
        if (!rest.empty()) pieces.push_back(rest);
    }
    return pieces;
}

}  // namespace

Lexer::Lexer(std::vector<std::string> verbs, std::vector<std::string> targets,
             std::vector<std::string> options, std::vector<std::string> properties)
    : verbs(std::move(verbs)),
      targets(std::move(targets)),
      options(std::move(options)),
      properties(std::move(properties)) {
    const TraceObject trace(__FILE__, __func__, __LINE__);
    prependMissingDashes(this->targets);
    prependMissingDashes(this->options);
}

std::vector<Token> Lexer::tokenize(int argc, const char* const* argv) const {
    const TraceObject trace(__FILE__, __func__, __LINE__);
    return tokenize(std::vector<std::string>(argv, argv + std::max(argc, 0)));
}

std::vector<Token> Lexer::tokenize(const std::vector<std::string>& words) const {
    const TraceObject trace(__FILE__, __func__, __LINE__);
    const Items items = cutAtCommas(cutAtEqualsSigns(words));
    std::vector<Token> tokens;
    tokens.reserve(items.size());
    for (const std::string_view item : items) {
        tokens.push_back(classify(item));
    }
    return tokens;
}

Token Lexer::classify(std::string_view item) const {
    if (item == "=") return {"=", TokenType::Equal};
    if (item == ",") return {",", TokenType::Comma};

    struct Vocabulary {
        const std::vector<std::string>& entries;
        TokenType type;
        const char* foundText;
    };

    // The order decides for a word that stands in two vocabularies.
    const Vocabulary vocabularies[] = {
        {verbs, TokenType::Verb, "Found verb: "},
        {targets, TokenType::Target, "Found target: "},
        {options, TokenType::Option, "Found option: "},
        {properties, TokenType::Property, "Found property: "},
    };
    for (const Vocabulary& vocabulary : vocabularies) {
        const auto entry = std::find_if(
            vocabulary.entries.begin(), vocabulary.entries.end(),
            [item](const std::string& candidate) { return stringsIEqual(candidate, item); });
        if (entry == vocabulary.entries.end()) continue;
        logger.writeLine([&] { return vocabulary.foundText + toLower(std::string(item)); });
        return {*entry, vocabulary.type};
    }
    return {std::string(item), item.starts_with('-') ? TokenType::Unknown : TokenType::Value};
}

}  // namespace cli::framework
