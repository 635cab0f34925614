#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "addin/config/IniFiles.h"

namespace OrvelCalibrateS {

/// The cage that is fitted to the instrument. Only `Name` is used; the other fields only mirror the file.
struct CageType {
  std::string Name;     ///< the item number; builds the section name of the axes
  std::string Caption;  ///< display text
  std::string Place1;
  bool Place2 = false;
  std::int32_t CageReleaseBarHeight = 0;
  std::int32_t CageReleaseHeight = 0;
  bool Place3 = false;
  bool Place4 = false;
  std::int32_t Place5 = 0;
  std::int32_t Place6 = 0;
  std::int32_t Place7 = 0;
  std::int32_t Place8 = 0;
};

/// Reads the cage with that item number, or the installed one when `name` is empty. Never fails.
CageType ReadCageType(const IniFiles& files, std::string_view name = "", std::string_view file = "");

}  // namespace OrvelCalibrateS
