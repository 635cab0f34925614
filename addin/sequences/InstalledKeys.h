#pragma once

#include <string_view>

#include "addin/config/IniFiles.h"

namespace OrvelCalibrateS {

/// The item number that means no head or no tip.
inline constexpr std::string_view NothingInstalled = "0";

/// Record in Marivane.ini which head is on the module, and which tip is on the head. Steps that fail when the file
/// can't be written.
void WriteInstalledHead(const IniFiles& files, std::string_view item);
void WriteInstalledTip(const IniFiles& files, std::string_view item);

}  // namespace OrvelCalibrateS
