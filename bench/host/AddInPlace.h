#pragma once

#include <filesystem>

namespace Helmsway {

/// The add-in library that comes with the programs: `libOrvelCalibrateS.so` in the programs' own folder, as built, or
/// in `../lib/helmsway` from there, as installed. Where neither is a file, the path of the first.
std::filesystem::path AddInOfPrograms(const std::filesystem::path& programFolder);

}  // namespace Helmsway
