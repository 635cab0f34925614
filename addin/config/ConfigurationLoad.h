#pragma once

#include "addin/base/Steps.h"
#include "addin/config/Configuration.h"

namespace OrvelCalibrateS {

/// Loads the records that describe the machine, each replaced as a whole, in the order of their dependencies:
/// `ZCalibration`, `DeviceType`, `CageType`, the seven axis records. Only the first can fail.
void LoadMachineRecords(const Configuration& configuration, FailureMode mode);

/// Loads all shared records: those of the machine, then `Head`, `Tip` and `Nest` as installed.
void LoadInstalledRecords(const Configuration& configuration, FailureMode mode);

}  // namespace OrvelCalibrateS
