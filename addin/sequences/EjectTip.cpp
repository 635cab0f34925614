#include "addin/sequences/EjectTip.h"

#include "addin/config/Conversions.h"
#include "addin/sequences/DepthSteps.h"
#include "addin/sequences/InstalledKeys.h"
#include "addin/sequences/MoveToRack.h"
#include "addin/sequences/RackRecords.h"
#include "addin/sequences/SelectedRecords.h"

namespace OrvelCalibrateS {

using Command::Axis;

void EjectTip(SequenceContext& context) {
  HostChannel& host = context.Host;
  const Configuration& configuration = context.Configuration;
  SharedRecords& records = configuration.Records;
  const AxisRecord& axisS = records.AxisS;
  const AxisRecord& axisZ = records.AxisZ;

  if (!context.Flags.AtRack) MoveToRack(context);
  Skip([&] { host.WriteStatus("Ejecting tip"); });
  const RackRecords rack = LoadRackRecords(context);
  std::int32_t depth = 0;
  Put(depth, [&] { return DepthSteps(configuration, rack.Position.LowerStage, Depth::Counts, Depth::Omitted); });

  CommandText text;
  Skip([&] {
    const double height = Divide((rack.Plate.PlateHeight + records.Tip.EjectHeight) * axisZ.MoveSign, axisZ.MmPerStep);
    text += Command::Move(Axis::Z, depth + height);
  });
  text += Command::SetSpeed(Axis::S, axisS.SpeedB);
  // The eject stroke.
  Skip([&] {
    const double stroke = Divide(records.Head.SPositionMM, axisS.MmPerStep) * axisS.OffsetSign;
    text += Command::Move(Axis::S, axisS.MoveSign * records.Head.SDTeachToolOffset + CurrentSteps(context) + stroke);
  });
  // Recorded while the text is built; the second height then counts the bare head.
  Skip([&] { WriteInstalledTip(configuration.Files, NothingInstalled); });
  records.Tip = ReadTipType(configuration.Files);
  Put(depth, [&] { return DepthSteps(configuration, rack.Position.LowerStage, Depth::Counts, Depth::Counts); });
  Skip([&] { text += Command::Move(Axis::Z, depth + ClearanceSteps(rack.Plate, axisZ)); });
  text += Command::SetSpeed(Axis::S, axisS.SpeedC);

  if (!host.RunCommandText(text.Text(), FailureMode::Skip)) return;
  Skip([&] { host.WriteStatus(""); });
}

}  // namespace OrvelCalibrateS
