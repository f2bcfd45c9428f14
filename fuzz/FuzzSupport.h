// What the fuzz targets share: a folder of their own, the check of a law, and the rendering of a
// result.
#pragma once

#include "interfaces/cli/cliframework/ResultBase.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace tavik::fuzz {

/// The process's own folder, which stands for the installation folder too, with a "/" at its end.
/// It lies in memory where the machine offers that, and is removed at a regular end.
const std::string& folder();

/// Ends the process with a finding if `holds` is false.
void require(bool holds, const char* law);

std::string_view textOf(const std::uint8_t* data, std::size_t size);

/// Renders `result` in every format, checks what holds for all results, and returns the text form.
std::string render(cli::framework::ResultBase& result);

}  // namespace tavik::fuzz
