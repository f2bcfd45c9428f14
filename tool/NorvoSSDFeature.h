// The face of the drive commands: puts the command table, the request, the library and the
// response together.
#pragma once

#include "core/Attribute.h"
#include "core/Status.h"
#include "core/xml/XmlObject.h"
#include "interfaces/cli/cliframework/FeatureBase.h"
#include "tool/DriveRequest.h"
#include "tool/DriveResponse.h"
#include "tool/FeatureLibrary.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace tavik::norvossd {

/// Each handler is one recipe: check the target, build the request, add the properties, send,
/// turn the answer into a result.
class NorvoSSDFeature : public cli::framework::FeatureBase {
public:
    using Result = std::unique_ptr<cli::framework::ResultBase>;

    /// Does no work on drives: the library is opened by the first command that runs.
    NorvoSSDFeature();

    Result run(const cli::framework::CommandSpec& command,
               const cli::framework::ParsedCommand& parsed) override;
    void getPaths(std::vector<cli::framework::CommandSpec>& commands) override;

    /// Opens the feature library and applies the tool's configuration to it; null on success.
    Result loadFeatureLibrary();

    /// Switches the library's log on if the configuration says so; null on success.
    Result enableLibraryLog();

    /// Adds the supported products and the module folders to `request`, sends it, and fetches
    /// the answer and its status; null on success.
    Result sendRequest(orvel::core::xml::XmlObject& request, std::string& responseText,
                       orvel::core::Status& status);
    Result sendRequest(orvel::core::xml::XmlObject& request, std::string& responseText);

    /// Fetches an answer and its status; null on success.
    Result receiveResponse(std::uint64_t handle, std::string& responseText,
                           orvel::core::Status& status);

    // The checks and conversions of DriveTarget.h and DriveResponse.h under this class's name; the
    // two checks return null for success.
    static std::unique_ptr<cli::framework::ErrorResult>
    getNorvoSSDTarget(const cli::framework::ParsedCommand& parsed, std::string& target,
                      const cli::framework::CommandPart& part);
    static std::unique_ptr<cli::framework::ErrorResult>
    checkResponseStatus(const orvel::core::xml::XmlElement& element, orvel::core::Status& status);
    static std::unique_ptr<cli::framework::ObjectResult>
    objectToResult(const orvel::core::xml::XmlObject& object);

    // The generic `show` and `set`: the command's result.
    Result showProperties(const std::string& jobName, const cli::framework::ParsedCommand& parsed);
    Result setProperty(orvel::core::Attribute descriptor, const std::string& jobName,
                       const cli::framework::ParsedCommand& parsed);

    /// An answer's text as the command's result; never null.
    static Result responseToResult(const std::string& responseText);
    static Result saveOutputPayload(const std::string& responseText,
                                    const std::string& destination);

private:
    using ParsedCommand = cli::framework::ParsedCommand;
    using ResponseTree = std::unique_ptr<orvel::core::xml::XmlElement>;

    // Handlers of the commands with logic of their own.
    Result runFormatCommand(const std::string& formatType, const ParsedCommand& parsed);
    Result runNamespaceCommand(const std::string& action, const ParsedCommand& parsed);
    enum class Identification { structures, controllerList };
    Result runIdentifyCommand(Identification what, const ParsedCommand& parsed);
    Result runFirmwareUpdate(const ParsedCommand& parsed);
    Result runMethodCommand(const std::string& jobName, const ParsedCommand& parsed);
    Result runLogDump(const std::string& jobName, const ParsedCommand& parsed);

    /// `sendRequest` that keeps the tree of the answer, so that its text is parsed once.
    Result exchange(orvel::core::xml::XmlObject& request, std::string& responseText,
                    orvel::core::Status& status, ResponseTree& response);
    Result receive(std::uint64_t handle, std::string& responseText, orvel::core::Status& status,
                   ResponseTree& response);

    /// Sends, and turns the answer into the command's result.
    Result answerTo(DriveRequest& request);

    std::string name;
    FeatureLibrary library;
    std::vector<std::string> supportedProducts;  ///< drive families that this tool serves
};

}  // namespace tavik::norvossd
