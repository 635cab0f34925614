#pragma once

#include <cstdint>
#include <string>

namespace OrvelCalibrateS {

/// A motor of the instrument. Positions and limits are motor steps, speeds the instrument's own unit. Fields without a
/// comment only mirror the file.
struct AxisRecord {
  bool Present = false;  ///< the installed device and cage have this axis
  std::string Name;      ///< the axis that the line is for: "X", "Y", "Z", "S", "SDX", "SDY" or "SDS"
  float MmPerStep = 0;   ///< length of a motor step in mm; 0 when there is no line
  std::int32_t SpeedA = 0;
  std::int32_t SpeedB = 0;
  std::int32_t SpeedC = 0;
  std::int32_t LowLimit = 0;
  std::int32_t HighLimit = 0;
  std::int32_t Place7 = 0;
  std::int16_t Place8 = 0;
  std::int16_t Place9 = 0;
  std::int16_t Place10 = 0;
  std::int16_t Place11 = 0;
  std::int16_t MoveSign = 0;      ///< +1 or -1: of an Up step (S), of a length measured upward (Z)
  std::int16_t OffsetSign = 0;    ///< the opposite: of a Down step (S), of a length measured downward (Z)
  std::int32_t SafePosition = 0;  ///< the axis waits there while others move
};

}  // namespace OrvelCalibrateS
