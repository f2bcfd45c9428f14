// What the words of a line add to the request of a drive command, checked in form.
#pragma once

#include "core/Attribute.h"
#include "interfaces/cli/cliframework/CliFrameworkTypes.h"
#include "interfaces/cli/cliframework/ResultBase.h"
#include "tool/DriveRequest.h"

#include <cstdint>
#include <map>
#include <memory>
#include <string>

namespace tavik::norvossd {

/// An error result of this code and message.
std::unique_ptr<cli::framework::ResultBase> refuse(std::int32_t code, std::string message);

/// The value of a word that the line names, or null; held by `words`.
const std::string* valueOf(const std::map<std::string, std::string>& words,
                           const std::string& word);

bool isForced(const cli::framework::ParsedCommand& parsed);

/// Adds the property as typed if the line names it.
void addIfNamed(DriveRequest& request, const orvel::core::Attribute& descriptor,
                const cli::framework::ParsedCommand& parsed);

// The functions below return null where the line may go on, and a refusal otherwise.

/// As `addIfNamed`, for properties whose form is checked on this side.
std::unique_ptr<cli::framework::ResultBase> addIfValid(DriveRequest& request,
                                                       orvel::core::Attribute descriptor,
                                                       const cli::framework::ParsedCommand& parsed);

/// Adds which latency log the line asks for.
std::unique_ptr<cli::framework::ResultBase>
chooseLatencyLog(DriveRequest& request, const cli::framework::ParsedCommand& parsed);

/// Adds which NVMe log the line asks for; nothing if it names none, which asks for all of them.
std::unique_ptr<cli::framework::ResultBase>
chooseNVMeLog(DriveRequest& request, const cli::framework::ParsedCommand& parsed);

/// Adds which self-test the line asks for; `progress` receives what to tell the operator.
std::unique_ptr<cli::framework::ResultBase>
chooseSelfTest(DriveRequest& request, const cli::framework::ParsedCommand& parsed,
               std::string& progress);

}  // namespace tavik::norvossd
