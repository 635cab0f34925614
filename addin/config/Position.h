#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace OrvelCalibrateS {

struct Configuration;

/// The location of a stage position, and what is on it. Positions are in motor steps. Fields without a comment only
/// mirror the file.
struct Position {
  std::string Item;         ///< the item number
  std::string Name;         ///< key of the search by name, such as "STAGE2"
  std::string DisplayName;  ///< an empty one ends the search by name
  std::string Kind;         ///< "TIPRACK" where tips can be collected
  std::int32_t X = 0;
  std::int32_t Y = 0;
  std::int32_t SdX1 = 0;  ///< SD X for a head of one channel; the base position of a nest
  std::int32_t SdY1 = 0;
  std::int32_t SdX8 = 0;  ///< for a head of 8 channels
  std::int32_t SdY8 = 0;
  std::int32_t SdX12 = 0;  ///< for a head of 12 channels
  std::int32_t SdY12 = 0;
  bool LowerStage = false;  ///< the position is on the lower stage, under the open slider
  bool UpperStage = false;
  bool Place12 = false;
  std::string Place13;
  bool Place14 = false;
  bool Place15 = false;
  std::int16_t Place16 = 0;
  double Place17 = 0;
};

/// `Kind` of the positions where tips can be collected.
inline constexpr std::string_view TipRackKind = "TIPRACK";

/// Reads the position with that item number; with an empty item, the position with that name, or the blank record after
/// the end of the list when there is none; with neither, an empty record. The shared `DeviceType` must have been
/// loaded: its `Name` names the section. Never fails.
Position ReadPosition(const Configuration& configuration, std::string_view item, std::string_view name = "",
                      std::string_view file = "");

}  // namespace OrvelCalibrateS
