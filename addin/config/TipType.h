#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "addin/config/IniFiles.h"

namespace OrvelCalibrateS {

/// A pipette tip. Fields without a comment only mirror the file.
struct TipType {
  std::string Item;  ///< the item number
  std::string Name;  ///< display text; empty means no tip
  std::string Kind;
  double Place2 = 0;
  double Place3 = 0;
  std::int16_t Place4 = 0;
  std::int16_t Place5 = 0;
  bool Place6 = false;
  std::int32_t EjectHeight = 0;   ///< mm above the plate's height at which the tip is ejected
  std::int32_t CollectDepth = 0;  ///< mm of the collecting stroke
  std::int32_t Place9 = 0;
  double TipLength = 0;  ///< mm
  std::int32_t Place11 = 0;
  bool Place12 = false;
  bool Place13 = false;
  bool Place14 = false;
  bool Place15 = false;
  bool Place16 = false;
  bool Place17 = false;
  std::string Place18;
  double TipChuteClearOffset = 0;
  double Place19 = 0;
};

/// Reads the tip with that item number, or the one on the head when `item` is empty. Never fails.
TipType ReadTipType(const IniFiles& files, std::string_view item = "", std::string_view file = "");

}  // namespace OrvelCalibrateS
