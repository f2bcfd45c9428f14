#include "interfaces/cli/cliframework/Parser.h"

#include "interfaces/cli/cliframework/DuplicateTokenErrorResult.h"
#include "interfaces/cli/cliframework/Logger.h"
#include "interfaces/cli/cliframework/NoInputErrorResult.h"
#include "interfaces/cli/cliframework/ParseErrorResult.h"
#include "interfaces/cli/cliframework/SyntaxErrorBadValueResult.h"
#include "interfaces/cli/cliframework/SyntaxErrorMissingValueResult.h"
#include "interfaces/cli/cliframework/TraceObject.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <map>
#include <utility>

namespace cli::framework {

namespace {

using Values = std::map<std::string, std::string>;

std::string lookUp(const Values& values, const std::string& key, bool* found) {
    const auto entry = values.find(key);
    const bool present = entry != values.end();
    if (found != nullptr) *found = present;
    return present ? entry->second : std::string();
}

std::unique_ptr<SyntaxErrorResult> checkParts(const std::vector<CommandPart>& parts,
                                              const Values& values, TokenType type) {
    const TraceObject trace(__FILE__, __func__, __LINE__);
    for (const CommandPart& part : parts) {
        const auto entry = values.find(part.name);
        if (entry == values.end()) continue;
        const std::string& value = entry->second;
        if (part.valueRequired && value.empty()) {
            return std::make_unique<SyntaxErrorMissingValueResult>(type, part.name);
        }
        if (part.noValue && !value.empty()) {
            return std::make_unique<SyntaxErrorBadValueResult>(type, part.name, value);
        }
    }
    return nullptr;
}

}  // namespace

std::unique_ptr<SyntaxErrorResult> Parser::parse(const std::vector<Token>& tokens,
                                                 std::vector<CommandRef>* candidates) {
    const TraceObject trace(__FILE__, __func__, __LINE__);
    commands = candidates;
    initialize();
    std::unique_ptr<SyntaxErrorResult> result = parseLine(tokens);
    if (result) applyOutputRule(tokens);
    return result;
}

void Parser::initialize() {
    const TraceObject trace(__FILE__, __func__, __LINE__);
    parsedCommand = {};
    removedCommands.clear();
}

std::unique_ptr<SyntaxErrorResult> Parser::parseLine(const std::vector<Token>& tokens) {
    if (tokens.empty()) {
        auto result = std::make_unique<NoInputErrorResult>();
        if (commands != nullptr) result->setPotentialCommands({commands->begin(), commands->end()});
        return result;
    }
    if (tokens.front().tokenType != TokenType::Verb) {
        return std::make_unique<ParseErrorResult>(tokens.front());
    }
    if (auto failure = walkStates(tokens)) return failure;
    return filterOnOptions();
}

// A line can hold a hundred thousand tokens, so the states name their successor instead of
// calling it: the stack stays flat.
std::unique_ptr<SyntaxErrorResult> Parser::walkStates(const std::vector<Token>& tokens) {
    Step step{State::Verb};
    for (std::size_t index = 0; step.next != State::End; ++index) {
        const Token* const next = index + 1 < tokens.size() ? &tokens[index + 1] : nullptr;
        step = runState(step.next, tokens[index], next);
    }
    return std::move(step.result);
}

// Options are filtered after the walk, in sorted order. The two that every command has never
// remove one.
std::unique_ptr<SyntaxErrorResult> Parser::filterOnOptions() {
    for (const auto& [name, value] : parsedCommand.options) {
        if (name == OPTION_HELP.name || name == OPTION_OUTPUT.name) continue;
        const Token token{name, TokenType::Option};
        if (!filterOn(token)) return unknownPart(token);
    }
    return nullptr;
}

// An error comes out in the format that was asked for, also if the walk never reached the option.
// Intended: only "nvmxml" is looked for, and the key stays in the map.
void Parser::applyOutputRule(const std::vector<Token>& tokens) {
    std::string& format = parsedCommand.options[OPTION_OUTPUT.name];
    if (!format.empty()) return;
    for (std::size_t index = 0; index + 1 < tokens.size(); ++index) {
        const Token& token = tokens[index];
        const bool namesOutput =
            token.tokenType == TokenType::Option &&
            (token.text == OPTION_OUTPUT.shortName || token.text == OPTION_OUTPUT.name);
        if (namesOutput && stringsIEqual(tokens[index + 1].text, OUTPUT_NVMXML)) {
            format = OUTPUT_NVMXML;
        }
    }
}

Parser::Step Parser::runState(State state, const Token& token, const Token* next) {
    switch (state) {
    // clang-format off
    case State::Verb:          return stateVerb(token, next);
    case State::Option:        return stateOption(token, next);
    case State::OptionValue:   return stateOptionValue(token, next);
    case State::OptionComma:   return stateComma(next, TokenType::Option);
    case State::Target:        return stateTarget(token, next);
    case State::TargetValue:   return stateTargetValue(token, next);
    case State::TargetComma:   return stateComma(next, TokenType::Target);
    case State::Property:      return stateProperty(token, next);
    case State::Equals:        return stateEquals(token, next);
    case State::PropertyValue: return statePropertyValue(token, next);
    case State::End:           break;
        // clang-format on
    }
    return {};
}

Parser::Step Parser::stateVerb(const Token& token, const Token* next) {
    const TraceObject trace(__FILE__, __func__, __LINE__);
    parsedCommand.verb = token.text;
    filterOnVerb(token.text);

    if (next == nullptr) return {};
    switch (next->tokenType) {
    // clang-format off
    case TokenType::Target:   return {State::Target};
    case TokenType::Property: return {State::Property};
    case TokenType::Option:   return {State::Option};
    default:                  return refuse(*next);
        // clang-format on
    }
}

Parser::Step Parser::stateOption(const Token& token, const Token* next) {
    const TraceObject trace(__FILE__, __func__, __LINE__);
    currentOption = token.text;
    if (!parsedCommand.options.try_emplace(currentOption).second) {
        return {State::End, std::make_unique<DuplicateTokenErrorResult>(token)};
    }

    if (next == nullptr) return {};
    switch (next->tokenType) {
    // clang-format off
    case TokenType::Value:
    case TokenType::Property: return {State::OptionValue};
    case TokenType::Option:   return {State::Option};
    case TokenType::Target:   return {State::Target};
    default:                  return refuse(*next);
        // clang-format on
    }
}

Parser::Step Parser::stateOptionValue(const Token& token, const Token* next) {
    const TraceObject trace(__FILE__, __func__, __LINE__);
    parsedCommand.options[currentOption] += token.text;

    if (next == nullptr) return {};
    switch (next->tokenType) {
    // clang-format off
    case TokenType::Option:   return {State::Option};
    case TokenType::Target:   return {State::Target};
    case TokenType::Property: return {State::Property};
    case TokenType::Comma:    return {State::OptionComma};
    default:                  return refuse(*next);
        // clang-format on
    }
}

Parser::Step Parser::stateTarget(const Token& token, const Token* next) {
    const TraceObject trace(__FILE__, __func__, __LINE__);
    currentTarget = token.text;
    if (!parsedCommand.targets.try_emplace(currentTarget).second) {
        return {State::End, std::make_unique<DuplicateTokenErrorResult>(token)};
    }
    if (!filterOn(token)) return {State::End, unknownPart(token)};

    if (next == nullptr) return {};
    switch (next->tokenType) {
    // clang-format off
    case TokenType::Target:   return {State::Target};
    case TokenType::Property: return {State::Property};
    case TokenType::Value:    return {State::TargetValue};
    default:                  return refuse(*next);
        // clang-format on
    }
}

Parser::Step Parser::stateTargetValue(const Token& token, const Token* next) {
    const TraceObject trace(__FILE__, __func__, __LINE__);
    parsedCommand.targets[currentTarget] += token.text;

    if (next == nullptr) return {};
    switch (next->tokenType) {
    // clang-format off
    case TokenType::Property: return {State::Property};
    case TokenType::Comma:    return {State::TargetComma};
    case TokenType::Target:   return {State::Target};
    default:                  return refuse(*next);
        // clang-format on
    }
}

Parser::Step Parser::stateComma(const Token* next, TokenType kind) {
    const TraceObject trace(__FILE__, __func__, __LINE__);
    if (next == nullptr) return {};
    const bool goesOn =
        next->tokenType == TokenType::Value || next->tokenType == TokenType::Property;
    if (!goesOn) return refuse(*next);

    if (kind == TokenType::Option) {
        parsedCommand.options[currentOption] += ',';
        return {State::OptionValue};
    }
    parsedCommand.targets[currentTarget] += ',';
    return {State::TargetValue};
}

Parser::Step Parser::stateProperty(const Token& token, const Token* next) {
    const TraceObject trace(__FILE__, __func__, __LINE__);
    currentProperty = token.text;
    if (!parsedCommand.properties.try_emplace(currentProperty).second) {
        // Intended: unlike a duplicate option or target, this one offers the commands left.
        auto result = std::make_unique<DuplicateTokenErrorResult>(token);
        eraseAllRemainingCommands();
        result->setPotentialCommands(removedCommands);
        return {State::End, std::move(result)};
    }
    if (!filterOn(token)) return {State::End, unknownPart(token)};

    if (next == nullptr) return {};
    switch (next->tokenType) {
    // clang-format off
    case TokenType::Property: return {State::Property};
    case TokenType::Equal:    return {State::Equals};
    default:                  return refuse(*next);
        // clang-format on
    }
}

Parser::Step Parser::stateEquals(const Token& token, const Token* next) {
    const TraceObject trace(__FILE__, __func__, __LINE__);
    if (next == nullptr) return refuse(token);
    switch (next->tokenType) {
    // clang-format off
    case TokenType::Equal:
    case TokenType::Comma: return refuse(*next);
    default:               return {State::PropertyValue};
        // clang-format on
    }
}

Parser::Step Parser::statePropertyValue(const Token& token, const Token* next) {
    const TraceObject trace(__FILE__, __func__, __LINE__);
    parsedCommand.properties[currentProperty] = token.text;

    if (next == nullptr) return {};
    if (next->tokenType == TokenType::Property) return {State::Property};
    return refuse(*next);
}

Parser::Step Parser::refuse(const Token& token) {
    auto result = std::make_unique<ParseErrorResult>(token);
    eraseAllRemainingCommands();
    result->setPotentialCommands(removedCommands);
    return {State::End, std::move(result)};
}

std::unique_ptr<SyntaxErrorResult> Parser::unknownPart(const Token& token) const {
    auto result = std::make_unique<ParseErrorResult>(token);
    result->setPotentialCommands(removedCommands);
    return result;
}

template <typename Keep>
void Parser::removeUnless(Keep keep) {
    for (auto command = commands->end(); command != commands->begin();) {
        --command;
        if (keep(*command)) continue;
        logger.writeLine([&command] { return "Removing: " + command->asStr(); });
        removedCommands.push_back(std::move(static_cast<CommandSpec&>(*command)));
        command = commands->erase(command);
    }
}

void Parser::filterOnVerb(const std::string& verbText) {
    const TraceObject trace(__FILE__, __func__, __LINE__);
    if (commands == nullptr) return;
    logger.writeLine([&verbText] { return "Filtering on verb: " + verbText; });
    removeUnless(
        [&verbText](const CommandRef& command) { return stringsIEqual(command.verb, verbText); });
}

bool Parser::filterOn(const Token& token) {
    const TraceObject trace(__FILE__, __func__, __LINE__);
    if (commands == nullptr) return true;
    removedCommands.clear();
    logger.writeLine([&token] {
        return "Filtering on " + tokenTypeToString(token.tokenType) + ": " + token.text;
    });
    removeUnless([&token](CommandRef& command) {
        std::vector<CommandPart>* const parts = command.partsOf(token.tokenType);
        if (parts == nullptr) {
            logger.log(log_levels::FAULT,
                       "filterOn only accepts Token Types Target, Property, and Options, but '" +
                           token.text + "' is type: " + tokenTypeToString(token.tokenType));
            return true;
        }
        const auto part =
            std::find_if(parts->begin(), parts->end(), [&token](const CommandPart& declared) {
                return stringsIEqual(declared.name, token.text);
            });
        if (part == parts->end()) return false;
        part->found = true;
        return true;
    });
    return !commands->empty();
}

void Parser::eraseAllRemainingCommands() {
    const TraceObject trace(__FILE__, __func__, __LINE__);
    if (commands == nullptr) return;
    removedCommands.assign(std::make_move_iterator(commands->rbegin()),
                           std::make_move_iterator(commands->rend()));
    commands->clear();
}

std::string Parser::getOptionValue(const ParsedCommand& parsed, const std::string& key,
                                   bool* found) {
    return lookUp(parsed.options, key, found);
}

std::string Parser::getTargetValue(const ParsedCommand& parsed, const std::string& key,
                                   bool* found) {
    return lookUp(parsed.targets, key, found);
}

std::string Parser::getPropertyValue(const ParsedCommand& parsed, const std::string& key,
                                     bool* found) {
    return lookUp(parsed.properties, key, found);
}

std::vector<std::string> Parser::getTargetValues(const ParsedCommand& parsed,
                                                 const std::string& key, bool* found) {
    return splitNonBlank(lookUp(parsed.targets, key, found), ',');
}

std::unique_ptr<SyntaxErrorResult> Parser::checkParsedCommand(const CommandSpec& command) const {
    const TraceObject trace(__FILE__, __func__, __LINE__);
    if (auto refusal = checkParts(command.options, parsedCommand.options, TokenType::Option)) {
        return refusal;
    }
    if (auto refusal = checkParts(command.targets, parsedCommand.targets, TokenType::Target)) {
        return refusal;
    }
    return checkParts(command.properties, parsedCommand.properties, TokenType::Property);
}

}  // namespace cli::framework
