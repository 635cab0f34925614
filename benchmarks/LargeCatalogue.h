#pragma once

#include <string>
#include <string_view>

namespace Helmsway::Benchmarks {

/// The example's Marivane.ini with 300 heads, 200 tips, 100 nests, 200 plates and 200 positions, the same at each run:
/// the further ones are lines of the example under other names.
std::string LargeCatalogue(std::string_view example);

}  // namespace Helmsway::Benchmarks
