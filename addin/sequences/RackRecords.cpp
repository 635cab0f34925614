#include "addin/sequences/RackRecords.h"

#include "addin/config/ConfigurationLoad.h"
#include "addin/config/Conversions.h"
#include "addin/sequences/SelectedRecords.h"

namespace OrvelCalibrateS {

RackRecords LoadRackRecords(SequenceContext& context) {
  LoadMachineRecords(context.Configuration, FailureMode::Skip);
  LoadSelectedHead(context);
  LoadSelectedTip(context);
  return {SelectedPosition(context), SelectedTipRack(context)};
}

double ClearanceSteps(const PlateType& plate, const AxisRecord& axisZ) {
  constexpr double clearance = 2;
  return Divide((plate.PlateHeight + clearance) * axisZ.MoveSign, axisZ.MmPerStep);
}

}  // namespace OrvelCalibrateS
