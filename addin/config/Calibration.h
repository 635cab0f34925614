#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace OrvelCalibrateS {

struct Configuration;

/// Calibration values of a stage position, in motor steps. Fields without a comment only mirror the file.
struct Calibration {
  std::string Item;  ///< the item number
  std::string Name;  ///< key of the search by name, such as "STAGE2"; an empty name ends the search
  std::int32_t Place1 = 0;
  std::int32_t Place2 = 0;
  std::int32_t Place3 = 0;
  std::int32_t Place4 = 0;
  std::int32_t Place5 = 0;
  std::int32_t Place6 = 0;
  std::int32_t SdX = 0;  ///< SD X of the position
  std::int32_t SdY = 0;  ///< SD Y of the position
  bool Place9 = false;
};

/// Reads the calibration with that item number; with an empty item, the one with that name, or the blank record after
/// the end of the list when there is none; with neither, an empty record. The shared `DeviceType` must have been
/// loaded: its `Name` names the section. Never fails.
Calibration ReadCalibration(const Configuration& configuration, std::string_view item, std::string_view name = "",
                            std::string_view file = "");

}  // namespace OrvelCalibrateS
