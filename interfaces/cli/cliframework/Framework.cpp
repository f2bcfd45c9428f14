#include "interfaces/cli/cliframework/Framework.h"

#include "interfaces/cli/cliframework/ErrorResult.h"
#include "interfaces/cli/cliframework/HelpFeature.h"
#include "interfaces/cli/cliframework/Lexer.h"
#include "interfaces/cli/cliframework/Logger.h"
#include "interfaces/cli/cliframework/ParseErrorResult.h"
#include "interfaces/cli/cliframework/Parser.h"
#include "interfaces/cli/cliframework/TraceObject.h"

#include <algorithm>
#include <iterator>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace cli::framework {

namespace {

struct ShortOption {
    std::string_view spelling;
    std::string_view name;
};

// clang-format off
constexpr ShortOption shortOptionMap[] = {
    // spelling   canonical name
    {"-a",        "-all"},
    {"-d",        "-display"},
    {"-w",        "-wait"},
    {"-f",        "-force"},
    {"-help",     "-help"},
    {"-h",        "-help"},
    {"-output",   "-output"},
    {"-o",        "-output"},
    {"-x",        "-examine"},
};

// clang-format on

void logCount(const char* what, const std::vector<CommandRef>& commands) {
    logger.writeLine([&] { return what + std::to_string(commands.size()); });
}

/// Looks at the words as typed: "-H" asks for help, "-h=1" does not.
bool helpRequested(int argc, const char* const* argv) {
    return std::any_of(argv, argv + argc, [](const char* word) {
        return stringsIEqual(word, "-help") || stringsIEqual(word, "-h");
    });
}

std::unique_ptr<ResultBase> refuseConflict(const std::vector<CommandRef>& commands) {
    logger.writeLine([&] {
        std::string text = "The conflicting commands are: ";
        for (const CommandRef& command : commands)
            text += '"' + command.asStr() + "\" ";
        return text;
    });
    return std::make_unique<ErrorResult>(
        1, "The command list had more than one after filtering. This means that there might be "
           "more than one CommandSpec with the same required syntax.");
}

}  // namespace

bool Framework::instanceFlag = false;
std::unique_ptr<Framework> Framework::pFrameworkInst;

Framework& Framework::getInstance() {
    if (!instanceFlag) {
        pFrameworkInst = std::unique_ptr<Framework>(new Framework);
        instanceFlag = true;
        pFrameworkInst->addFeature("HelpFeature", std::make_unique<HelpFeature>());
    }
    return *pFrameworkInst;
}

void Framework::tearDown() {
    instanceFlag = false;
    // A feature that asks for the instance while it is being destroyed gets a fresh one.
    if (const auto ending = std::move(pFrameworkInst)) ending->clearFeatureList();
}

Framework::~Framework() = default;

bool Framework::addFeature(const std::string& key, std::unique_ptr<FeatureBase>&& feature) {
    return feature && features.try_emplace(key, std::move(feature)).second;
}

void Framework::removeFeature(const std::string& key) {
    features.erase(key);
}

void Framework::clearFeatureList() {
    // One by one: a map cleared as a whole destroys its entries in no order of the keys.
    while (!features.empty())
        features.erase(features.begin());
}

std::unique_ptr<ResultBase> Framework::execute(const std::vector<std::string>& args) {
    std::vector<const char*> words;
    words.reserve(args.size());
    for (const std::string& word : args)
        words.push_back(word.c_str());
    return execute(static_cast<int>(words.size()), words.data());
}

std::unique_ptr<ResultBase> Framework::execute(int argc, const char* const* argv) {
    const TraceObject trace(__FILE__, __func__, __LINE__);
    if (argc < 1) {
        ParsedCommand parsed;
        parsed.verb = VERB_HELP;
        return HelpFeature().run({}, parsed);
    }

    filteredCommands.clear();
    logger.writeLine([&] { return "Executing: " + tokenArrayToString(argc, argv); });
    std::vector<CommandRef> commands = buildCommands();
    logCount("Commands to consider: ", commands);
    const std::vector<Token> tokens = tokenize(argc, argv, commands);
    logger.writeLine([&] { return "Tokenized input is: " + tokenArrayToString(tokens); });

    Parser parser;
    std::unique_ptr<ResultBase> result = parser.parse(tokens, &commands);
    logCount("Commands left after Parser filtered: ", commands);
    if (!result) {
        if (helpRequested(argc, argv)) {
            narrowForHelp(commands);
        } else {
            narrow(commands);
        }
        result = runOnlyCommand(commands, parser);
    }

    // A refusal follows -output as well.
    if (result) result->setOutputOption(parser.getParsedCommand().options);
    return result;
}

// The value of a required part may be missing from a line that asks for help.
void Framework::narrowForHelp(std::vector<CommandRef>& commands) {
    if (commands.size() < 2) {
        logger.writeLine([] { return "Command filtering check skipped due to help option: "; });
        return;
    }
    filterIncompleteCommands(TokenType::Target, commands);
}

void Framework::narrow(std::vector<CommandRef>& commands) {
    // Decides the order in which the dropped commands are offered as suggestions.
    if (commands.size() >= 2) std::sort(commands.begin(), commands.end(), SortOption);

    filterIncompleteCommands(TokenType::Target, commands);
    logCount("Commands left after checking required targets: ", commands);
    filterIncompleteCommands(TokenType::Property, commands);
    logCount("Commands left after checking required properties: ", commands);
    filterIncompleteCommands(TokenType::Option, commands);
    logCount("Commands left after checking required options: ", commands);
}

std::unique_ptr<ResultBase> Framework::runOnlyCommand(const std::vector<CommandRef>& commands,
                                                      const Parser& parser) {
    if (commands.empty()) {
        auto refusal = std::make_unique<ParseErrorResult>();
        refusal->setPotentialCommands(std::exchange(filteredCommands, {}));
        return refusal;
    }
    if (commands.size() > 1) return refuseConflict(commands);
    return runCommand(commands.front(), parser);
}

std::unique_ptr<ResultBase> Framework::runCommand(const CommandRef& command, const Parser& parser) {
    const ParsedCommand parsed = parser.getParsedCommand();
    FeatureBase* feature = command.feature;
    if (feature == nullptr) {
        return std::make_unique<ErrorResult>(
            1, "feature pointer was null - probably programmer error");
    }

    std::optional<HelpFeature> help;
    if (parsed.options.contains(OPTION_HELP.name)) feature = &help.emplace(command);

    logger.writeLine([&] { return "Executing: " + command.asStr(); });
    if (auto refusal = feature->validate(parsed)) return refusal;
    if (auto refusal = parser.checkParsedCommand(command)) return refusal;
    return feature->run(command, parsed);
}

std::vector<CommandRef> Framework::buildCommands() {
    const TraceObject trace(__FILE__, __func__, __LINE__);
    std::vector<CommandRef> commands;
    for (const auto& [key, feature] : features) {
        std::vector<CommandSpec> specs;
        feature->getPaths(specs);
        commands.reserve(commands.size() + specs.size());
        for (CommandSpec& spec : specs) {
            spec.options.reserve(spec.options.size() + 2);
            spec.addOption(OPTION_HELP);
            spec.addOption(OPTION_OUTPUT);
            commands.emplace_back(std::move(spec), feature.get());
        }
    }
    return commands;
}

std::vector<Token> Framework::tokenize(int argc, const char* const* argv,
                                       const std::vector<CommandRef>& commands) const {
    const TraceObject trace(__FILE__, __func__, __LINE__);
    std::vector<std::string> verbs;
    std::vector<std::string> targets;
    std::vector<std::string> options;
    std::vector<std::string> properties;
    verbs.reserve(commands.size());
    targets.reserve(2 * commands.size());
    options.reserve(6 * commands.size());
    properties.reserve(commands.size());
    for (const CommandRef& command : commands) {
        verbs.emplace_back(command.verb);
        for (const CommandPart& part : command.targets)
            targets.emplace_back(part.name);
        for (const CommandPart& part : command.properties)
            properties.emplace_back(part.name);
        for (const CommandPart& part : command.options) {
            options.emplace_back(part.name);
            if (!part.shortName.empty()) options.emplace_back(part.shortName);
        }
    }

    const Lexer lexer(std::move(verbs), std::move(targets), std::move(options),
                      std::move(properties));
    std::vector<Token> tokens = lexer.tokenize(argc, argv);
    for (Token& token : tokens) {
        if (token.tokenType != TokenType::Option) continue;
        const auto* const row =
            std::find_if(std::begin(shortOptionMap), std::end(shortOptionMap),
                         [&](const ShortOption& entry) { return entry.spelling == token.text; });
        if (row != std::end(shortOptionMap)) token.text = row->name;
    }
    return tokens;
}

void Framework::filterIncompleteCommands(TokenType tokenType, std::vector<CommandRef>& commands) {
    const TraceObject trace(__FILE__, __func__, __LINE__);
    for (auto index = commands.size(); index-- > 0;) {
        CommandRef& command = commands[index];
        const std::vector<CommandPart>* const parts = getCommandPart(tokenType, command);
        if (parts == nullptr) return;
        const auto missing =
            std::find_if(parts->begin(), parts->end(),
                         [](const CommandPart& part) { return part.required && !part.found; });
        if (missing == parts->end()) continue;

        logger.writeLine([&] {
            return tokenTypeToString(tokenType) + " '" + std::string(missing->name) +
                   "' required, but not found?";
        });
        logger.writeLine([&] { return "Removing: " + command.asStr(); });
        filteredCommands.push_back(static_cast<CommandSpec&&>(std::move(command)));
        commands.erase(commands.begin() + static_cast<std::ptrdiff_t>(index));
    }
}

const std::vector<CommandPart>* Framework::getCommandPart(TokenType tokenType,
                                                          const CommandSpec& command) {
    switch (tokenType) {
    // clang-format off
    case TokenType::Option:   return &command.options;
    case TokenType::Target:   return &command.targets;
    case TokenType::Property: return &command.properties;
    default:                  return nullptr;
        // clang-format on
    }
}

std::string Framework::tokenArrayToString(int argc, const char* const* argv) {
    std::string text;
    for (int index = 0; index < argc; ++index) {
        text += argv[index];
        text += ' ';
    }
    return text;
}

std::string Framework::tokenArrayToString(const std::vector<Token>& tokens) {
    std::string text;
    for (const Token& token : tokens) {
        text += token.text;
        text += '[';
        text += tokenTypeToString(token.tokenType);
        text += "] ";
    }
    return text;
}

}  // namespace cli::framework
