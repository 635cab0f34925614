#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace Helmsway {

/// Why the add-in finds nothing in a configuration file of that name, in words for the user; empty when there is no
/// such reason. `bytes` is what the file holds; empty for a file that is missing.
std::string WhyNothingIsFound(std::string_view name, std::optional<std::string_view> bytes);

}  // namespace Helmsway
