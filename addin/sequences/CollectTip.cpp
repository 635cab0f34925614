#include "addin/sequences/CollectTip.h"

#include "addin/config/Conversions.h"
#include "addin/sequences/DepthSteps.h"
#include "addin/sequences/InstalledKeys.h"
#include "addin/sequences/MoveToRack.h"
#include "addin/sequences/RackRecords.h"
#include "addin/sequences/SelectedRecords.h"

namespace OrvelCalibrateS {

using Command::Axis;

void CollectTip(SequenceContext& context) {
  HostChannel& host = context.Host;
  const Configuration& configuration = context.Configuration;
  const SharedRecords& records = configuration.Records;
  const AxisRecord& axisZ = records.AxisZ;

  HomeUnlessHomed(context);
  if (!context.Flags.AtRack) MoveToRack(context);
  Skip([&] { host.WriteStatus("Collecting tip"); });
  const RackRecords rack = LoadRackRecords(context);
  std::int32_t depth = 0;
  Put(depth, [&] { return DepthSteps(configuration, rack.Position.LowerStage, Depth::Counts, Depth::Omitted); });

  CommandText text;
  text += Command::SetSpeed(Axis::S, records.AxisS.SpeedB);
  Skip([&] {
    text += Command::Move(Axis::S, records.AxisS.MoveSign * records.Head.SDTeachToolOffset + CurrentSteps(context));
  });
  const bool zCollision = ReadZCollision(configuration.Files);
  if (zCollision) text += Command::ZCollisionOff();
  // The collecting stroke.
  Skip([&] {
    const double plateHeight = Divide(rack.Plate.PlateHeight * axisZ.MoveSign, axisZ.MmPerStep);
    const double stroke = Divide(static_cast<double>(records.Tip.CollectDepth) * axisZ.OffsetSign, axisZ.MmPerStep);
    text += Command::Move(Axis::Z, depth + plateHeight + stroke);
  });
  // Recorded while the text is built: the tip counts as installed before the instrument has moved.
  Skip([&] { WriteInstalledTip(configuration.Files, records.Tip.Item); });
  Put(depth, [&] { return DepthSteps(configuration, rack.Position.LowerStage, Depth::Counts, Depth::Counts); });
  // The lift, to 2 mm above the plate with the tip on.
  Skip([&] { text += Command::Move(Axis::Z, depth + ClearanceSteps(rack.Plate, axisZ)); });
  if (zCollision) text += Command::ZCollisionOn();
  text += Command::SetSpeed(Axis::S, records.AxisS.SpeedC);

  if (!host.RunCommandText(text.Text(), FailureMode::Skip)) return;
  Skip([&] { host.WriteStatus(""); });
}

}  // namespace OrvelCalibrateS
