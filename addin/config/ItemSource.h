#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "addin/base/Steps.h"
#include "addin/config/IniFiles.h"

namespace OrvelCalibrateS {

/// What an empty item number means to a reader.
enum class EmptyItem {
  Installed,  ///< the entry that the section's key "Installed" names
  AsGiven,    ///< nothing special: the key is the bare word "Item"
};

/// A catalogue entry, located and split, ready to fill a record. In skip mode throughout: a part that can't be read is
/// empty.
struct ItemSource {
  std::string item;
  SplitResult line;
};

/// The first steps of every record reader: file, item number, line, split. An empty `file` is Marivane.ini.
ItemSource FindItem(const IniFiles& files, std::string_view section, std::string_view item, std::string_view file,
                    EmptyItem emptyItem);

/// Walks a list by number: calls `visit` with "1", "2", "3" and so on until it returns false. The counter has 16 bits:
/// after 32767 the walk ends in skip mode, and fails in pass-up mode.
template <class Visit>
void WalkItems(FailureMode mode, Visit&& visit) {
  constexpr std::int32_t last = 32767;
  for (std::int32_t number = 1; number <= last; ++number) {
    if (!visit(std::to_string(number))) return;
  }
  Require(mode == FailureMode::Skip);
}

}  // namespace OrvelCalibrateS
