#include "tool/NorvoSSDFeature.h"

#include "core/AttributeTypes.h"
#include "core/GlobalLogging.h"
#include "core/Strings.h"
#include "core/XmlConverter.h"
#include "core/xml/Vocabulary.h"
#include "features/JobConstants.h"
#include "features/JobProperties.h"
#include "interfaces/cli/cliframework/NotImplementedErrorResult.h"
#include "interfaces/cli/cliframework/SimpleResult.h"
#include "tool/DriveArguments.h"
#include "tool/DriveCommandTable.h"
#include "tool/DriveTarget.h"
#include "tool/Installation.h"
#include "tool/MessagePrompt.h"
#include "tool/SupportedProducts.h"
#include "tool/ToolConfiguration.h"

#include <iostream>
#include <utility>

namespace tavik::norvossd {

namespace {

using namespace cli::framework;
using namespace orvel::features;
using orvel::core::Attribute;
using orvel::core::Status;
using orvel::core::XmlConverter;
using prompt::MessagePrompt;
namespace jobs = orvel::interfaces::orveli::jobs;
namespace methods = orvel::interfaces::orveli::xml::tags::types;
namespace strings = orvel::core::strings;
namespace types = orvel::core::types;
namespace xml = orvel::core::xml;

using Result = NorvoSSDFeature::Result;

/// What a handler insists on, whatever its command declares.
CommandPart driveTarget(bool required) {
    CommandPart part;
    part.name = "-norvossd";
    part.required = required;
    part.valueRequired = required;
    return part;
}

const CommandPart& requiredDrive() {
    static const CommandPart PART = driveTarget(true);
    return PART;
}

const CommandPart& optionalDrive() {
    static const CommandPart PART = driveTarget(false);
    return PART;
}

void writeProgress(const std::string& text) {
    std::clog << text << std::endl;
}

Attribute supportedProductsOf(const std::vector<std::string>& products) {
    Attribute attribute("SupportedProducts", "Supported Products", types::vectorOfStrings());
    attribute.setValue(products);
    return attribute;
}

/// Intended: the list of folders crosses as one string.
Attribute additionalModuleDirs() {
    const Attribute catalogued = firmware_update::AdditionalModuleDirs();
    return {catalogued.getName(), catalogued.getDisplayName(), types::string()};
}

}  // namespace

NorvoSSDFeature::NorvoSSDFeature()
    : name("NorvoSSD"),
      supportedProducts(std::begin(SUPPORTED_PRODUCTS), std::end(SUPPORTED_PRODUCTS)) {}

void NorvoSSDFeature::getPaths(std::vector<CommandSpec>& commands) {
    appendDriveCommands(commands);
}

Result NorvoSSDFeature::run(const CommandSpec& command, const ParsedCommand& parsed) {
    if (auto failure = loadFeatureLibrary()) return failure;

    const auto set = [&](const char* job, Attribute descriptor) {
        return setProperty(std::move(descriptor), job, parsed);
    };
    const auto show = [&](const char* job) { return showProperties(job, parsed); };
    const auto method = [&](const char* job) { return runMethodCommand(job, parsed); };
    const auto dump = [&](const char* job) { return runLogDump(job, parsed); };

    switch (command.id) {
    // clang-format off
    case  0: return show  (jobs::NorvoSSD);
    case  1: return set   (jobs::EnduranceAnalyzer,      endurance_analyzer::EnduranceAnalyzer());
    case  2: return set   (jobs::MaxAddress,             max_address::MaximumLBA());
    case  3: return set   (jobs::PhyConfig,              phy_config::PhyConfig());
    case  4: return set   (jobs::SCTFeatureControl,      sct_feature_control::PhysicalSectorSize());
    case  5: return set   (jobs::SCTFeatureControl,      sct_feature_control::PLITestTimeInterval());
    case  6: return set   (jobs::PowerGovernor,          power_governor::PowerGovernorMode());
    case  7: return set   (jobs::ErrorRecoveryControl,   error_recovery_control::ReadErrorRecoveryTimer());
    case  8: return set   (jobs::PhySpeed,               phy_speed::PhySpeed());
    case  9: return set   (jobs::SpreadSpectrumClocking, spread_spectrum_clocking::SSCEnabled());
    case 10: return set   (jobs::SCTFeatureControl,      sct_feature_control::TemperatureLoggingInterval());
    case 11: return set   (jobs::NVMeFeatures,           nvme_features::TempThreshold());
    case 12: return set   (jobs::WriteCache,             write_cache::WriteCacheState());
    case 13: return set   (jobs::WriteCache,             write_cache::WriteCacheReorderingStateEnabled());
    case 14: return set   (jobs::DIPM,                   dipm::DIPMEnabled());
    case 15: return set   (jobs::ErrorRecoveryControl,   error_recovery_control::WriteErrorRecoveryTimer());
    case 16: return set   (jobs::WriteCache,             write_cache::WriteCacheEnabled());
    case 17: return runFirmwareUpdate(parsed);
    case 18: return show  (jobs::SMART);
    case 19: return show  (jobs::HealthMetrics);
    case 20: return show  (jobs::Performance);
    // 21 is not declared by any command.
    case 22: return method(jobs::DriveSelfTest);
    case 23: return method(jobs::StandbyImmediate);
    case 24: return runFormatCommand(format::types::DELETE_TYPE, parsed);
    case 25: return set   (jobs::NVMeFeatures,           nvme_features::SMBusAddress());
    case 26: return set   (jobs::LatencyTracking,        latency_tracking::LatencyTrackingEnabled());
    case 27: return runNamespaceCommand(namespace_management::actions::CREATE, parsed);
    case 28: return runNamespaceCommand(namespace_management::actions::DELETE_ACTION, parsed);
    case 29: return runNamespaceCommand(namespace_management::actions::ATTACH, parsed);
    case 30: return runNamespaceCommand(namespace_management::actions::DETACH, parsed);
    case 31: return runIdentifyCommand(Identification::structures, parsed);
    case 32: return runFormatCommand(format::types::NVME_FORMAT, parsed);
    case 33: return method(jobs::HDATemperature);
    case 34: return method(jobs::PhyCounters);
    case 35: return method(jobs::LatencyTracking);
    case 36: return dump  (jobs::Nlog);
    case 37: return dump  (jobs::EventLog);
    case 38: return dump  (jobs::AssertLog);
    case 39: return dump  (jobs::GPL);
    case 40: return method(jobs::NVMeGetLog);
    case 41: return runIdentifyCommand(Identification::controllerList, parsed);
    case 42: return set   (jobs::NVMeFeatures,           nvme_features::ResetCRCError());
    case 43: return set   (jobs::NVMeFeatures,           nvme_features::AggregationThreshold());
    case 44: return set   (jobs::NVMeFeatures,           nvme_features::AggregationTime());
    case 45: return show  (jobs::EyeDiagram);
    default: return std::make_unique<NotImplementedErrorResult>(command.id, name);
        // clang-format on
    }
}

Result NorvoSSDFeature::loadFeatureLibrary() {
    orvel::core::global_logging::initialize();
    if (auto failure = library.load()) return failure;
    Result result = library.hasLogger() ? enableLibraryLog() : nullptr;
    if (configuration::isAdapterEnabled()) library.announceAdapter();
    return result;
}

Result NorvoSSDFeature::enableLibraryLog() {
    const std::string text = configuration::readText();
    // Text that does not parse is no better than none.
    const auto object = text.empty() ? nullptr : configuration::parse(text);
    if (object == nullptr) {
        return refuse(4,
                      "Invalid or corrupted configuration file: " + configuration::getConfigPath());
    }
    const auto settings = XmlConverter::toAttributes(*object);
    const std::string enabled = configuration::valueOf(settings, configuration::ENABLE_LOG);
    if (!strings::equals(enabled, "true", true)) return nullptr;

    const std::string file = configuration::valueOf(settings, configuration::LOG_FILE);
    if (library.enableLog(file)) return nullptr;
    return refuse(4, "Invalid debug LogFile given: " + file);
}

Result NorvoSSDFeature::sendRequest(xml::XmlObject& request, std::string& responseText,
                                    Status& status) {
    ResponseTree response;
    return exchange(request, responseText, status, response);
}

Result NorvoSSDFeature::sendRequest(xml::XmlObject& request, std::string& responseText) {
    Status status;
    return sendRequest(request, responseText, status);
}

Result NorvoSSDFeature::receiveResponse(std::uint64_t handle, std::string& responseText,
                                        Status& status) {
    ResponseTree response;
    return receive(handle, responseText, status, response);
}

Result NorvoSSDFeature::exchange(xml::XmlObject& request, std::string& responseText, Status& status,
                                 ResponseTree& response) {
    request.addProperty(XmlConverter::toXml(supportedProductsOf(supportedProducts)));
    addPropertyAsTyped(request, additionalModuleDirs(), installation::path("FirmwareModules"));
    if (!library.canSend()) return refuse(1, "ORVEL Interface not loaded");
    return receive(library.send(request.toString()), responseText, status, response);
}

Result NorvoSSDFeature::receive(std::uint64_t handle, std::string& responseText, Status& status,
                                ResponseTree& response) {
    if (!library.canReceive()) return refuse(1, "ORVEL Interface not loaded");
    auto answer = library.receive(handle);
    if (answer.code != 0 || !answer.hasData) {
        return refuse(2, "ORVEL Interface failure receiving XML Response. ORVEL Interface error "
                         "code = " +
                             std::to_string(answer.code));
    }
    responseText = std::move(answer.text);
    response = XmlConverter::toXml(responseText);
    if (response == nullptr) {
        return refuse(10, "ORVEL Interface failure receiving XML Response. No valid data "
                          "received.");
    }
    return checkResponseStatus(*response, status);
}

Result NorvoSSDFeature::answerTo(DriveRequest& request) {
    std::string text;
    Status status;
    ResponseTree response;
    if (auto failure = exchange(request.getObject(), text, status, response)) return failure;
    return norvossd::responseToResult(std::move(response));
}

std::unique_ptr<ErrorResult> NorvoSSDFeature::getNorvoSSDTarget(const ParsedCommand& parsed,
                                                                std::string& target,
                                                                const CommandPart& part) {
    return norvossd::getNorvoSSDTarget(parsed, target, part);
}

std::unique_ptr<ErrorResult> NorvoSSDFeature::checkResponseStatus(const xml::XmlElement& element,
                                                                  Status& status) {
    return norvossd::checkResponseStatus(element, status);
}

std::unique_ptr<ObjectResult> NorvoSSDFeature::objectToResult(const xml::XmlObject& object) {
    return norvossd::objectToResult(object);
}

Result NorvoSSDFeature::responseToResult(const std::string& responseText) {
    return norvossd::responseToResult(XmlConverter::toXml(responseText));
}

Result NorvoSSDFeature::saveOutputPayload(const std::string& responseText,
                                          const std::string& destination) {
    return norvossd::saveOutputPayload(XmlConverter::toXml(responseText).get(), destination);
}

Result NorvoSSDFeature::showProperties(const std::string& jobName, const ParsedCommand& parsed) {
    std::string target;
    if (auto failure = getNorvoSSDTarget(parsed, target, optionalDrive())) return failure;
    DriveRequest request(jobName, methods::GetProperties, target);

    std::vector<std::string> wanted;
    if (jobName == jobs::NorvoSSD) {
        wanted = {"ModelNumber", "SerialNumber", "Firmware",   "ProductFamily",
                  "Index",       "DevicePath",   "Bootloader", "FirmwareUpdateAvailable",
                  "DeviceStatus"};
    }
    if (const auto* display = valueOf(parsed.options, OPTION_DISPLAY.name)) {
        wanted = strings::split(*display, ',');
    }
    if (!parsed.options.contains(OPTION_ALL.name)) {
        for (const std::string& attributeName : wanted) {
            request.select(Attribute(attributeName, "", types::string()));
        }
    }
    if (const auto* id = valueOf(parsed.targets, "-smart"); id != nullptr && !id->empty()) {
        request.addAsTyped(smart::ID(), *id);
    }
    if (auto failure = addIfValid(request, eye_diagram::Group(), parsed)) return failure;
    if (auto failure = addIfValid(request, eye_diagram::Lane(), parsed)) return failure;
    return answerTo(request);
}

Result NorvoSSDFeature::setProperty(Attribute descriptor, const std::string& jobName,
                                    const ParsedCommand& parsed) {
    std::string target;
    if (auto failure = getNorvoSSDTarget(parsed, target, requiredDrive())) return failure;

    const std::string propertyName = descriptor.getName();
    const auto* const value = valueOf(parsed.properties, propertyName);
    if (value == nullptr) return refuse(7, "Property not found: " + propertyName);
    if (value->empty()) {
        return refuse(8, "Must specify a value for the given property: " + propertyName);
    }
    if (!isForced(parsed)) {
        const auto& prompts = prompt::propertyPrompts();
        if (const auto entry = prompts.find(propertyName); entry != prompts.end()) {
            if (!entry->second.getAskUser()) {
                writeProgress(entry->second.getWarning());
            } else if (auto cancelled = entry->second.promptUser()) {
                return cancelled;
            }
        }
    }
    DriveRequest request(jobName, methods::SetProperty, target);
    if (descriptor.setValueFromText(*value) != Status()) {
        return refuse(8, "Invalid value given for " + propertyName);
    }
    request.select(descriptor);

    std::string responseText;
    Status status;
    if (auto failure = sendRequest(request.getObject(), responseText, status)) return failure;
    std::string text = "Set " + propertyName + " successful.";
    if (!status.getMessage().empty()) text += " " + status.getMessage();
    return std::make_unique<SimpleResult>(text);
}

Result NorvoSSDFeature::runFormatCommand(const std::string& formatType,
                                         const ParsedCommand& parsed) {
    const bool isDelete = stringsIEqual(formatType, format::types::DELETE_TYPE);
    const char* const warning = isDelete
                                    ? "WARNING! You have selected to delete all the data on the "
                                      "drive! "
                                    : "WARNING! You have selected to format the drive! ";
    const char* const question = isDelete ? "Proceed with the delete?" : "Proceed with the format?";
    const char* const progress = isDelete ? "Deleting..." : "Formatting...";

    std::string target;
    if (auto failure = getNorvoSSDTarget(parsed, target, requiredDrive())) return failure;
    const bool forced = isForced(parsed);
    if (!forced) {
        if (auto cancelled = MessagePrompt(warning, question, true).promptUser()) return cancelled;
    }
    DriveRequest request(jobs::Format, methods::Method, target);
    request.addAsTyped(format::Type(), formatType);
    addIfNamed(request, format::SecureEraseSetting(), parsed);
    addIfNamed(request, format::LBAFormat(), parsed);
    addIfNamed(request, format::ProtectionInformation(), parsed);
    addIfNamed(request, format::MetadataSettings(), parsed);
    // Intended: an answered question does not force the job, only the option does.
    request.addAsTyped(format::Force(), forced ? "true" : "false");
    if (const auto* id = valueOf(parsed.targets, "-namespace")) {
        if (!strings::isNumeric(*id) && !strings::isHexadecimal(*id)) {
            return refuse(8, "Invalid value for -namespace target. The value must be a valid "
                             "namespace ID or 0xFFFFFFFF.");
        }
        request.addAsTyped(namespace_management::NamespaceId(), *id);
    }
    writeProgress(std::string(progress) + "(This can take several minutes to complete)");
    return answerTo(request);
}

Result NorvoSSDFeature::runNamespaceCommand(const std::string& action,
                                            const ParsedCommand& parsed) {
    std::string target;
    if (auto failure = getNorvoSSDTarget(parsed, target, requiredDrive())) return failure;
    if (action == namespace_management::actions::DELETE_ACTION && !isForced(parsed)) {
        const MessagePrompt question("WARNING! You have selected to delete the namespace!",
                                     "Proceed with the delete?", true);
        if (auto cancelled = question.promptUser()) return cancelled;
    }
    DriveRequest request(jobs::NamespaceManagement, methods::Method, target);
    request.addAsTyped(namespace_management::Action(), action);
    addIfNamed(request, namespace_management::Size(), parsed);
    addIfNamed(request, format::LBAFormat(), parsed);
    addIfNamed(request, format::ProtectionInformation(), parsed);

    const Attribute sharing = namespace_management::MultiPathIoCapabilities();
    const auto* const shared = valueOf(parsed.properties, sharing.getName());
    request.addAsTyped(sharing, shared != nullptr ? *shared : "1");

    if (const auto* id = valueOf(parsed.targets, "-namespace")) {
        request.addAsTyped(namespace_management::NamespaceId(), *id);
    }
    if (const auto* controller = valueOf(parsed.targets, "-nvmecontroller")) {
        if (!strings::isNumeric(*controller)) {
            return refuse(8, "Invalid value for -nvmecontroller target. The value must be an "
                             "integer.");
        }
        request.addAsTyped(namespace_management::NVMeControllerID(), *controller);
    }
    return answerTo(request);
}

Result NorvoSSDFeature::runIdentifyCommand(Identification what, const ParsedCommand& parsed) {
    namespace structures = identify::nvme::structures;

    std::string target;
    if (auto failure = getNorvoSSDTarget(parsed, target, optionalDrive())) return failure;
    DriveRequest request(jobs::Identify, methods::Method, target);
    const auto ask = [&request](std::uint8_t structure, const std::string& namespaceId) {
        request.addAsTyped(identify::ControllerNamespaceStructure(), strings::toString(structure));
        request.addAsTyped(namespace_management::NamespaceId(), namespaceId);
    };
    const auto* const id = valueOf(parsed.targets, "-namespace");

    if (what == Identification::controllerList) {
        if (id == nullptr) {
            ask(structures::ALL_CONTROLLERS, "0");
        } else if (strings::isNumeric(*id)) {
            ask(structures::CONTROLLERS_ATTACHED_TO_NSID, *id);
        } else {
            return refuse(8, "Invalid value for -namespace target. The value must be a valid "
                             "namespace ID.");
        }
        return answerTo(request);
    }
    if (parsed.targets.contains("-nvmecontroller")) {
        if (id != nullptr) {
            return refuse(8, "Conflicting targets provided. Please specify -nvmecontroller or "
                             "-namespace, not both.");
        }
        ask(structures::CONTROLLER_DATA, "0");
    } else if (id != nullptr) {
        // Intended: any other value asks for no structure, and the library chooses.
        if (stringsIEqual(*id, "allocated")) {
            ask(structures::ALLOCATED_NAMESPACE_LIST, "0");
        } else if (stringsIEqual(*id, "attached")) {
            ask(structures::ATTACHED_NAMESPACE_LIST, "0");
        } else if (strings::isNumeric(*id)) {
            ask(structures::NAMESPACE_DATA_WITH_NSID, *id);
        }
    }
    return answerTo(request);
}

Result NorvoSSDFeature::runFirmwareUpdate(const ParsedCommand& parsed) {
    std::string target;
    if (auto failure = getNorvoSSDTarget(parsed, target, requiredDrive())) return failure;
    // The library finds the firmware image by itself: the line names none.
    DriveRequest request(jobs::FirmwareUpdate, methods::Method, target);
    if (!isForced(parsed)) {
        const MessagePrompt question("WARNING! You have selected to update the drives firmware! ",
                                     "Proceed with the update?", true);
        if (auto cancelled = question.promptUser()) return cancelled;
    }
    writeProgress("Updating firmware...");
    return answerTo(request);
}

Result NorvoSSDFeature::runMethodCommand(const std::string& jobName, const ParsedCommand& parsed) {
    std::string target;
    if (auto failure = getNorvoSSDTarget(parsed, target, optionalDrive())) return failure;
    DriveRequest request(jobName, methods::Method, target);
    std::string progress;
    if (stringsIEqual(jobName, jobs::LatencyTracking)) {
        if (auto failure = chooseLatencyLog(request, parsed)) return failure;
    } else if (stringsIEqual(jobName, jobs::NVMeGetLog)) {
        if (auto failure = chooseNVMeLog(request, parsed)) return failure;
    } else if (stringsIEqual(jobName, jobs::DriveSelfTest)) {
        if (auto failure = chooseSelfTest(request, parsed, progress)) return failure;
    }
    if (!progress.empty()) writeProgress(progress);
    return answerTo(request);
}

Result NorvoSSDFeature::runLogDump(const std::string& jobName, const ParsedCommand& parsed) {
    std::string target;
    if (auto failure = getNorvoSSDTarget(parsed, target, optionalDrive())) return failure;
    DriveRequest request(jobName, methods::Method, target);

    const auto* const path = valueOf(parsed.options, OPTION_DESTINATION.name);
    const std::string destination = path != nullptr ? *path : std::string();
    if (!destination.empty() && target.empty()) {
        return refuse(8, "-destination can only be used when one -norvossd is selected.");
    }
    if (const auto* address = valueOf(parsed.targets, "-gpl")) {
        if (gpl::LogAddress().setValueFromText(*address) != Status()) {
            return refuse(8, "Invalid log address given " + *address);
        }
        request.addAsTyped(gpl::LogAddress(), *address);
    }
    if (auto failure = addIfValid(request, gpl::PageNum(), parsed)) return failure;
    if (auto failure = addIfValid(request, gpl::SectorCount(), parsed)) return failure;

    std::string text;
    Status status;
    ResponseTree response;
    if (auto failure = exchange(request.getObject(), text, status, response)) return failure;
    return norvossd::saveOutputPayload(response.get(), destination);
}

}  // namespace tavik::norvossd
