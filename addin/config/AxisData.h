#pragma once

#include "addin/config/Configuration.h"

namespace OrvelCalibrateS {

/// Fills the seven shared axis records from the lines of the installed device and cage; an axis without a line is blank
/// afterwards. The shared `DeviceType` and `CageType` must have been loaded. Never fails.
void ReadAxisData(const Configuration& configuration);

}  // namespace OrvelCalibrateS
