#pragma once

#include <cstdint>

#include "addin/config/Configuration.h"

namespace OrvelCalibrateS {

/// Whether `DepthSteps` includes a depth.
enum class Depth : std::uint8_t { Counts, Omitted };

/// The Z position, in motor steps, at which the pipette module, with its head and tip, reaches a stage level. Every
/// computed height starts from it. Head and tip are the shared records; the Z calibration is read again. In pass-up
/// mode: fails when the Z calibration can't be read, when `AxisZ.MmPerStep` is 0, and outside 32 bits.
std::int32_t DepthSteps(const Configuration& configuration, bool lowerStage, Depth headDepth, Depth tipDepth);

}  // namespace OrvelCalibrateS
