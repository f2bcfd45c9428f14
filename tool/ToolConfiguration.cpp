#include "tool/ToolConfiguration.h"

#include "core/AttributeTypes.h"
#include "core/Files.h"
#include "core/Strings.h"
#include "core/XmlConverter.h"
#include "tool/Installation.h"

#include <cstddef>
#include <utility>

namespace tavik::configuration {

namespace {

using orvel::core::Attribute;
using orvel::core::AttributeTable;
using orvel::core::Payload;
using orvel::core::XmlConverter;
namespace files = orvel::core::files;
namespace strings = orvel::core::strings;
namespace types = orvel::core::types;
namespace xml = orvel::core::xml;

/// A real file has a few hundred bytes. Anything larger than this is no configuration, and not
/// worth the memory.
constexpr std::size_t SIZE_LIMIT = 64UL * 1024 * 1024;

Attribute setting(const char* name, const char* displayName, const char* value) {
    Attribute attribute(name, displayName, types::string());
    attribute.setValue(value);
    return attribute;
}

}  // namespace

// clang-format off
//                                           name                display name          default
Attribute EnableLog()        { return setting(ENABLE_LOG,         "Enable Log",         "false"); }
Attribute EnableLSIAdapter() { return setting(ENABLE_LSI_ADAPTER, "Enable LSI Adapter", "false"); }
Attribute LogFile()          { return setting(LOG_FILE,           "Log File",           "/var/log/ORVELI.log"); }

// clang-format on

std::string getConfigPath() {
    const std::string defaultPath = installation::path("tavik_config.xml");
    // The preferred path has the same text; it stands apart so that it can move on its own.
    const std::string preferredPath = installation::path("tavik_config.xml");
    return files::isReadable(preferredPath) ? preferredPath : defaultPath;
}

std::string readText() {
    return files::read(getConfigPath(), SIZE_LIMIT).value_or(std::string());
}

std::unique_ptr<xml::XmlObject> parse(const std::string& text) {
    auto element = XmlConverter::toXml(text);
    if (dynamic_cast<xml::XmlObject*>(element.get()) == nullptr) return nullptr;
    return std::unique_ptr<xml::XmlObject>(static_cast<xml::XmlObject*>(element.release()));
}

std::string valueOf(const AttributeTable& settings, const std::string& name) {
    const Attribute* const attribute = settings.find(name);
    if (attribute == nullptr) return {};
    const Payload& store = attribute->getPayload();
    if (store.size() == 0) return {};
    // The last byte is the terminating NUL.
    return {store.data(), store.data() + store.size() - 1};
}

bool isAdapterEnabled() {
    const std::string text = readText();
    if (text.empty()) return false;
    const auto object = parse(text);
    if (object == nullptr) return false;
    const AttributeTable settings = XmlConverter::toAttributes(*object);
    return strings::equals(valueOf(settings, ENABLE_LSI_ADAPTER), "true", true);
}

}  // namespace tavik::configuration
