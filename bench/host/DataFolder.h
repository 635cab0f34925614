#pragma once

#include <filesystem>

namespace Helmsway {

/// The folder of the user's own Helmsway files: `$XDG_DATA_HOME/helmsway`, by default `~/.local/share/helmsway`. A
/// relative path in the environment is ignored, as the add-in ignores it. Throws `std::runtime_error` without a home.
std::filesystem::path DataFolder();

}  // namespace Helmsway
