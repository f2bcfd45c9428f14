// The only reader of standard input: a warning and a question to the operator.
#pragma once

#include "interfaces/cli/cliframework/ResultBase.h"

#include <map>
#include <memory>
#include <string>

namespace tavik::prompt {

class MessagePrompt {
public:
    /// `question` comes without the choices. With `askUser` clear the warning is only to be shown
    /// and the operation goes on.
    MessagePrompt(std::string warning, std::string question, bool askUser);

    std::string getWarning() const { return warning; }

    bool getAskUser() const { return askUser; }

    /// Shows warning and question on standard error and reads one character from standard input,
    /// for which it waits. Null: the operator agreed. Otherwise, also without any input, the
    /// result that tells that the command was cancelled, whose error code is 0.
    std::unique_ptr<cli::framework::ResultBase> promptUser() const;

private:
    std::string warning;
    std::string question;
    bool askUser;
};

/// What to tell the operator before a property is set, by the property's name.
const std::map<std::string, MessagePrompt>& propertyPrompts();

}  // namespace tavik::prompt
