// The text of an answer to its status, to a result in every format, and to payload files.

#include "core/Files.h"
#include "core/Strings.h"
#include "core/XmlConverter.h"
#include "core/xml/Vocabulary.h"
#include "fuzz/FuzzSupport.h"
#include "interfaces/cli/cliframework/CliFrameworkTypes.h"
#include "tool/DriveResponse.h"

#include <fcntl.h>
#include <filesystem>
#include <memory>
#include <string>
#include <unistd.h>
#include <utility>
#include <vector>

namespace {

using orvel::core::Status;
using orvel::core::XmlConverter;
namespace files = orvel::core::files;
namespace fuzz = tavik::fuzz;
namespace xml = orvel::core::xml;

/// The working directory is the folder of payloads while this lives; both are left clean.
class InPayloadFolder {
public:
    InPayloadFolder() : origin(::open(".", O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {
        fuzz::require(origin >= 0 && ::chdir(fuzz::folder().c_str()) == 0, "the folder is there");
    }

    InPayloadFolder(const InPayloadFolder&) = delete;
    InPayloadFolder& operator=(const InPayloadFolder&) = delete;

    ~InPayloadFolder() {
        for (const auto& entry : std::filesystem::directory_iterator("."))
            std::filesystem::remove_all(entry);
        fuzz::require(::fchdir(origin) == 0, "the way back is open");
        ::close(origin);
    }

private:
    int origin;
};

std::size_t countStatuses(const xml::XmlObject& object);

template <class Parent>
std::size_t countStatusesIn(const Parent& parent) {
    std::size_t count = 0;
    for (const auto& object : parent.getObjects())
        count += countStatuses(*object);
    return count;
}

template <class Container>
std::size_t countStatusesBelow(const Container& container) {
    std::size_t count = countStatusesIn(container);
    for (const auto& list : container.getLists())
        count += countStatusesIn(*list);
    return count;
}

std::size_t countStatuses(const xml::XmlObject& object) {
    const bool isStatus = object.getAttribute("category") == "status";
    return (isStatus ? 1 : 0) + countStatusesBelow(object);
}

/// The objects of category "status" in the whole tree.
std::size_t countStatuses(const xml::XmlElement& root) {
    if (const auto* object = dynamic_cast<const xml::XmlObject*>(&root))
        return countStatuses(*object);
    if (const auto* list = dynamic_cast<const xml::XmlList*>(&root)) return countStatusesIn(*list);
    if (const auto* container = dynamic_cast<const xml::XmlContainer*>(&root))
        return countStatusesBelow(*container);
    return 0;
}

void checkStatus(const xml::XmlElement& root) {
    constexpr int UNTOUCHED = -77;
    Status status(UNTOUCHED, UNTOUCHED, "untouched");
    const auto failure = tavik::norvossd::checkResponseStatus(root, status);
    if (countStatuses(root) != 1) {
        fuzz::require(failure == nullptr, "none or several statuses are no error");
        fuzz::require(status.getMessage() == "untouched", "none or several statuses are not read");
        return;
    }
    if (failure == nullptr) {
        fuzz::require(status.getCode() == 0, "a status without an error has the code 0");
        return;
    }
    fuzz::require(failure->getErrorCode() == 3, "a failed job has the code 3");
    fuzz::require(!fuzz::render(*failure).empty(), "a failed job says why");
}

const xml::XmlObject* outputOf(const xml::XmlElement& root) {
    const auto* const object = dynamic_cast<const xml::XmlObject*>(&root);
    if (object == nullptr) return nullptr;
    for (const auto& child : object->getObjects()) {
        if (cli::framework::toLower(child->getAttribute("category")) == "output")
            return child.get();
    }
    return nullptr;
}

std::string labelOf(const xml::XmlObject& drive) {
    return drive.getAttribute("name") + "_" + drive.getAttribute("key");
}

/// Whether a file named after each drive stays in the working directory.
bool staysInFolder(const xml::XmlElement& root) {
    const xml::XmlObject* const output = outputOf(root);
    if (output == nullptr) return true;
    for (const auto& drive : output->getObjects()) {
        if (labelOf(*drive).find('/') != std::string::npos) return false;
    }
    return true;
}

/// What the payload of the only drive must have made of the file, if it is easy to tell.
void checkFile(const xml::XmlElement& root) {
    const xml::XmlObject* const output = outputOf(root);
    if (output == nullptr || output->getObjects().size() != 1) return;
    const xml::XmlObject& drive = *output->getObjects().front();
    const std::string file = labelOf(drive) + ".bin";
    constexpr std::size_t LONGEST_NAME = 255;
    if (file.size() > LONGEST_NAME || file.find('\0') != std::string::npos) return;

    Status ignored;
    const auto failure = tavik::norvossd::checkResponseStatus(drive, ignored);
    const xml::XmlObject* payload = nullptr;
    for (const auto& child : drive.getObjects()) {
        if (payload == nullptr &&
            cli::framework::toLower(child->getAttribute("category")) == "payload")
            payload = child.get();
    }
    constexpr std::size_t LIMIT = 1UL << 24;
    const auto written = files::read(file, LIMIT);
    fuzz::require(written.has_value() == (failure == nullptr && payload != nullptr),
                  "a file is written for a payload without a failure, and for nothing else");
    if (!written) return;
    const std::string digits = cli::framework::toLower(payload->getAttribute("value"));
    std::string bytes;
    const bool isHexadecimal =
        digits.size() % 2 == 0 && digits.find_first_not_of("0123456789abcdef") == std::string::npos;
    for (std::size_t at = 0; isHexadecimal && at < digits.size(); at += 2)
        bytes += static_cast<char>(std::stoi(digits.substr(at, 2), nullptr, 16));
    fuzz::require(*written == bytes, "the file holds the bytes of the payload");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(fuzz::textOf(data, size));
    auto root = XmlConverter::toXml(text);
    if (root != nullptr) {
        checkStatus(*root);
        const InPayloadFolder inside;
        if (staysInFolder(*root)) {
            const auto saved = tavik::norvossd::saveOutputPayload(root.get(), "");
            fuzz::require(saved->getErrorCode() == 0, "a dump has the code 0");
            fuzz::render(*saved);
            checkFile(*root);
        }
        const auto discarded = tavik::norvossd::saveOutputPayload(root.get(), "/dev/null");
        fuzz::require(discarded->getErrorCode() == 0, "a dump has the code 0");
        fuzz::render(*discarded);
    }
    const auto result = tavik::norvossd::responseToResult(std::move(root));
    const auto code = result->getErrorCode();
    fuzz::require(code == 0 || code == 3, "an answer has the code 0 or 3");
    fuzz::render(*result);
    return 0;
}
