// Where the tool is installed: the one place that knows the build setting TAVIK_INSTALL_DIR.
#pragma once

#include <string>

namespace tavik::installation {

/// `name` in the installation folder.
std::string path(const std::string& name);

}  // namespace tavik::installation
