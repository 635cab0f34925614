#pragma once

#include "addin/config/PlateType.h"
#include "addin/config/Position.h"
#include "addin/sequences/SequenceContext.h"

namespace OrvelCalibrateS {

/// The rack that the operator has picked, and its position.
struct RackRecords {
  OrvelCalibrateS::Position Position;
  PlateType Plate;
};

/// The first steps of the tip sequences: loads the machine's records, then the selected head and tip, then the selected
/// position and rack. In skip mode.
RackRecords LoadRackRecords(SequenceContext& context);

/// Length in Z steps from a stage level to 2 mm above the plate; a step that fails when `AxisZ.MmPerStep` is 0.
double ClearanceSteps(const PlateType& plate, const AxisRecord& axisZ);

}  // namespace OrvelCalibrateS
