// Names of properties, which users write in any case.
#pragma once

#include <boost/algorithm/string/case_conv.hpp>

#include <locale>
#include <string>

namespace orvel::interfaces::orveli::jobs {

/// In small letters, whatever the locale: equal for all spellings of one name.
inline std::string lowered(const std::string& name) {
    return boost::algorithm::to_lower_copy(name, std::locale::classic());
}

}  // namespace orvel::interfaces::orveli::jobs
