#include "tool/Installation.h"

namespace tavik::installation {

std::string path(const std::string& name) {
    return TAVIK_INSTALL_DIR "/" + name;
}

}  // namespace tavik::installation
