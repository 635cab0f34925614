#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "addin/config/IniFiles.h"

namespace OrvelCalibrateS {

/// A plate or a tip rack. Fields without a comment only mirror the file.
struct PlateType {
  std::string Item;  ///< the item number
  std::string Name;  ///< display text
  std::string Kind;  ///< "TIPRACK" for a rack that tips are collected from
  std::int16_t Place2 = 0;
  std::int16_t Place3 = 0;
  double PlateHeight = 0;  ///< mm
  double Place5 = 0;
  double Place6 = 0;
  double Place7 = 0;
  double Place8 = 0;
  double Place9 = 0;
  std::string Place10;
  double Place11 = 0;
  double Place12 = 0;
  double Place13 = 0;
  bool Place14 = false;
  double SBSA1Xmm = 0;
  double SBSA1Ymm = 0;
  bool Place15 = false;
  bool Place16 = false;
  bool Place17 = false;
  bool Place18 = false;
  bool Place19 = false;
  bool Place20 = false;
  bool Place21 = false;
  bool Place22 = false;
  bool Place23 = false;
  bool Place24 = false;
  bool Place25 = false;
  bool Place26 = false;
  bool Place27 = false;
};

/// Reads the plate with that item number; the key "Installed" isn't used. Never fails.
PlateType ReadPlateType(const IniFiles& files, std::string_view item, std::string_view file = "");

}  // namespace OrvelCalibrateS
