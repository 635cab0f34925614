#pragma once

#include <cstdint>
#include <string_view>

#include "addin/config/IniFiles.h"
#include "forms/Controls.h"

namespace OrvelCalibrateS {

/// Filter for the entries of a catalogue that a list offers. It tests the content of a place of the item line, in any
/// letter case.
struct ItemFilter {
  static constexpr std::int16_t Off = -1;

  std::int16_t includePlace = Off;  ///< only entries whose place contains `includeText`
  std::string_view includeText = {};
  std::int16_t excludePlace = Off;  ///< no entries whose place contains `excludeText`
  std::string_view excludeText = {};
};

/// Fills the list with the catalogue's entries in the order of their item numbers, which become their item data.
/// Numbers 0 to 9 may have gaps; from 10 onward the list ends at the first number that has no line. Selects the entry
/// that the section's "Default" names, if it names one. In skip mode.
void FillItemList(const IniFiles& files, forms::ComboBox& list, std::string_view section, const ItemFilter& filter);

/// Index of the first entry with that text in any letter case; 0 when there is none.
std::int16_t FindListItem(std::string_view text, const forms::ComboBox& list);

}  // namespace OrvelCalibrateS
