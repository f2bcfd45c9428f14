// What an answer of the feature library means: its status, its objects as results, its payloads
// as files. Never sees the library.
#pragma once

#include "core/Status.h"
#include "core/xml/XmlElement.h"
#include "core/xml/XmlObject.h"
#include "interfaces/cli/cliframework/ErrorResult.h"
#include "interfaces/cli/cliframework/ObjectResult.h"
#include "interfaces/cli/cliframework/ResultBase.h"

#include <memory>
#include <string>

namespace tavik::norvossd {

/// Reads the one object of category "status" in `element` into `status`, and refuses a code other
/// than 0. None, or several of them, are no error and leave `status` alone.
std::unique_ptr<cli::framework::ErrorResult>
checkResponseStatus(const orvel::core::xml::XmlElement& element, orvel::core::Status& status);

/// The answer's first output object as a result; an empty one if there is none, or if `response`
/// is null or no object. Takes the answer over: hidden properties are removed from it.
std::unique_ptr<cli::framework::ResultBase>
responseToResult(std::unique_ptr<orvel::core::xml::XmlElement> response);

std::unique_ptr<cli::framework::ObjectResult>
objectToResult(const orvel::core::xml::XmlObject& object);

/// Writes the payload of each drive of the output to a file: `destination`, or if that is empty
/// one named after the log and the drive's key in the current folder. Failures stand in the
/// result's text only.
std::unique_ptr<cli::framework::ResultBase>
saveOutputPayload(const orvel::core::xml::XmlElement* response, const std::string& destination);

}  // namespace tavik::norvossd
