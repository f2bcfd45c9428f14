// The answers that the benchmarks work on.
#pragma once

#include <cstddef>
#include <string>

namespace tavik::bench {

/// A successful answer of about 5 MB: 20,000 drives of three properties each.
std::string largeAnswer();

/// A successful answer with `levels` objects, each inside the one before, with one property each.
std::string deepAnswer(std::size_t levels);

}  // namespace tavik::bench
