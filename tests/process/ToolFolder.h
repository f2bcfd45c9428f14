// A working directory with the tool, its installation folder and the stand-in's orders.
#pragma once

#include "tests/support/ChildProcess.h"
#include "tests/support/TemporaryFolder.h"

#include <filesystem>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace tavik::process {

inline const std::string CONFIG = "opt/tavik_config.xml";

/// What the tool writes in place of a file that is no configuration.
inline const std::string DEFAULT_CONFIG =
    R"(<?xml version="1.0" encoding="utf-8"?>)"
    R"(<Object category="attributeList" name="TAVIK Config">)"
    R"(<Property category="attribute" displayName="Enable Log" name="EnableLog" size="6")"
    R"( type="string" value="false"/>)"
    R"(<Property category="attribute" displayName="Enable LSI Adapter" name="EnableLSIAdapter")"
    R"( size="6" type="string" value="false"/>)"
    R"(<Property category="attribute" displayName="Log File" name="LogFile" size="20")"
    R"( type="string" value="/var/log/ORVELI.log"/>)"
    R"(</Object>)";

/// An answer whose job succeeded, around the given children of the root.
std::string answer(const std::string& children);

class ToolFolder {
public:
    enum class Place { INSTALLED, BESIDE_THE_TOOL, NOWHERE };

    /// With a valid configuration, and the library in the place given.
    explicit ToolFolder(Place library = Place::INSTALLED);

    std::string path(const std::string& name) const { return folder.path(name); }

    void write(const std::string& name, const std::string& bytes) const;

    /// Nothing if there is no such file.
    std::optional<std::string> read(const std::string& name) const;

    /// The names below the installation folder.
    std::set<std::string> installed() const;

    /// The tool with the words, to be changed and given to `testing::run`.
    testing::Program tool(const std::vector<std::string>& words) const;

    /// Another program, such as one that starts the tool as `./tavik` with a limit.
    testing::Program other(const std::string& executable,
                           const std::vector<std::string>& words) const;

    testing::Ending run(const std::vector<std::string>& words) const;

private:
    testing::TemporaryFolder folder;
};

}  // namespace tavik::process
