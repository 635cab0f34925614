#pragma once

#include <filesystem>

/// The configuration files that the bench works with.
namespace Helmsway::Installation {

/// The bench's own installation in `DataFolder`. Made from the example where it is missing; a file that is there
/// already stays as it is. Throws `std::exception` when it can't be made.
std::filesystem::path Own(const std::filesystem::path& example);

}  // namespace Helmsway::Installation
