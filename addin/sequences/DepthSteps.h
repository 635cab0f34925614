#pragma once

#include <cstdint>

#include "addin/config/Configuration.h"

namespace OrvelCalibrateS {

/// Whether a depth counts in `DepthSteps`.
enum class Depth : std::uint8_t { Counts, Omitted };

/// The Z position, in motor steps, at which what hangs on the pipette module reaches a stage level: from there every
/// computed height starts. Head and tip are the shared records; the Z calibration is read anew. In pass-up mode: fails
/// when that can't be read, when `AxisZ.MmPerStep` is 0, and outside 32 bits.
std::int32_t DepthSteps(const Configuration& configuration, bool lowerStage, Depth headDepth, Depth tipDepth);

}  // namespace OrvelCalibrateS
