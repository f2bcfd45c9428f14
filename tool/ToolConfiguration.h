// The tool's configuration file: its path, its settings, and how its text is read.
#pragma once

#include "core/Attribute.h"
#include "core/AttributeTable.h"
#include "core/xml/XmlObject.h"

#include <memory>
#include <string>

namespace tavik::configuration {

/// Value of the `name` attribute of the file's top element.
inline constexpr const char* ROOT_NAME = "TAVIK Config";

// Names of the three settings.
inline constexpr const char* ENABLE_LOG = "EnableLog";
inline constexpr const char* ENABLE_LSI_ADAPTER = "EnableLSIAdapter";
inline constexpr const char* LOG_FILE = "LogFile";

// The settings, each with its default value.
orvel::core::Attribute EnableLog();
orvel::core::Attribute EnableLSIAdapter();
orvel::core::Attribute LogFile();

std::string getConfigPath();

/// The whole file; empty if it is absent or can't be read.
std::string readText();

/// The file's top element; null if the text does not parse or holds no object.
std::unique_ptr<orvel::core::xml::XmlObject> parse(const std::string& text);

/// The stored text of a setting; empty if it is absent.
std::string valueOf(const orvel::core::AttributeTable& settings, const std::string& name);

/// Whether the file announces the adapter library; false if it can't be read.
bool isAdapterEnabled();

}  // namespace tavik::configuration
