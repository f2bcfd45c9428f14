#include "tool/MessagePrompt.h"

#include "interfaces/cli/cliframework/SimpleResult.h"

#include <iostream>
#include <utility>

namespace tavik::prompt {

MessagePrompt::MessagePrompt(std::string warning, std::string question, bool askUser)
    : warning(std::move(warning)),
      question(std::move(question)),
      askUser(askUser) {}

std::unique_ptr<cli::framework::ResultBase> MessagePrompt::promptUser() const {
    std::clog << warning << std::endl;
    std::clog << question << " (Y|N): " << std::flush;

    char answer = 'n';  // stays if there is no input
    std::cin.get(answer);
    if (answer == 'Y' || answer == 'y') return nullptr;
    return std::make_unique<cli::framework::SimpleResult>("Cancelled");
}

const std::map<std::string, MessagePrompt>& propertyPrompts() {
    constexpr bool SHOW_ONLY = false;
    static const std::map<std::string, MessagePrompt> PROMPTS = {
        {"TempThreshold",
         {"NOTE: NVMe* 2.5\" Drives begin thermal throttling at 66 deg C and NVMe* AIC drives "
          "begin thermal throttling at 75 deg C. Setting a TempThreshold value above these "
          "temperatures will mean the drive will start being thermally throttled before the drive "
          "generates a warning. Please consult the product specifications for the drive being used "
          "to set this value correctly.",
          "Proceed with setting TempThreshold?", SHOW_ONLY}},
    };
    return PROMPTS;
}

}  // namespace tavik::prompt
