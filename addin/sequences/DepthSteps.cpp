#include "addin/sequences/DepthSteps.h"

#include "addin/config/Conversions.h"
#include "addin/sequences/HeadDepth.h"

namespace OrvelCalibrateS {

std::int32_t DepthSteps(const Configuration& configuration, bool lowerStage, Depth headDepth, Depth tipDepth) {
  const SharedRecords& records = configuration.Records;
  const ZCalibration calibration = ReadZCalibration(configuration.Files);

  const double head = headDepth == Depth::Counts ? HeadDepthAtStage(records.Head, calibration) : 0;
  const double stage = lowerStage ? calibration.StageHeightLower : calibration.StageHeightUpper;
  // Without a tip, the depth at which the head's volume class mounts one.
  const double tipOrMount = records.Tip.Name.empty() ? records.Head.TipMountDepth : records.Tip.TipLength;
  const double tip = tipDepth == Depth::Counts ? tipOrMount : 0;

  const double length = calibration.MountHeight - head - stage - tip;
  // DeltaZ is subtracted after the conversion: it is in steps, everything else in mm.
  return WholeNumberValue(Divide(length, records.AxisZ.MmPerStep) * records.AxisZ.OffsetSign - calibration.DeltaZ);
}

}  // namespace OrvelCalibrateS
