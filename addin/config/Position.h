#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace OrvelCalibrateS {

struct Configuration;

/// Where a stage position lies and what stands on it. Positions are motor steps.
/// Fields without a comment are held for the file's sake.
struct Position {
  std::string Item;         ///< the item number
  std::string Name;         ///< by which it is found, such as "STAGE2"
  std::string DisplayName;  ///< empty ends a walk by name
  std::string Kind;         ///< "TIPRACK" where tips can be collected
  std::int32_t X = 0;
  std::int32_t Y = 0;
  std::int32_t SdX1 = 0;  ///< SD X for a head of one channel; the base position of a nest
  std::int32_t SdY1 = 0;
  std::int32_t SdX8 = 0;  ///< for a head of 8 channels
  std::int32_t SdY8 = 0;
  std::int32_t SdX12 = 0;  ///< for a head of 12 channels
  std::int32_t SdY12 = 0;
  bool LowerStage = false;  ///< the position lies on the lower stage, under the open slider
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

/// Reads the position of that item number; with an empty item, the position of that name, or the blank record behind
/// the list's end when there is none; with neither, an empty record. The shared `DeviceType` must have been loaded: its
/// `Name` names the section. Never fails.
Position ReadPosition(const Configuration& configuration, std::string_view item, std::string_view name = "",
                      std::string_view file = "");

}  // namespace OrvelCalibrateS
