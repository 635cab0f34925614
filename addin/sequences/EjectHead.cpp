#include "addin/sequences/EjectHead.h"

#include "addin/config/ConfigurationLoad.h"
#include "addin/config/Conversions.h"
#include "addin/sequences/DepthSteps.h"
#include "addin/sequences/InstalledKeys.h"
#include "addin/sequences/NestSeat.h"
#include "addin/sequences/SelectedRecords.h"

namespace OrvelCalibrateS {

using Command::Axis;

void EjectHead(SequenceContext& context) {
  HostChannel& host = context.Host;
  const Configuration& configuration = context.Configuration;
  const SharedRecords& records = configuration.Records;
  const AxisRecord& axisS = records.AxisS;
  const AxisRecord& axisZ = records.AxisZ;

  HomeUnlessHomed(context);
  Skip([&] { host.WriteStatus("Ejecting Pipette head"); });
  LoadMachineRecords(configuration, FailureMode::Skip);
  LoadSelectedHead(context);
  LoadSelectedTip(context);
  const NestSlot slot = SlotFor(records.Nest, records.Head.HeadCode);
  const Position position = ReadPosition(configuration, "", records.Nest.PositionName);
  std::int32_t ZBase = 0;
  Put(ZBase, [&] { return DepthSteps(configuration, position.LowerStage, Depth::Omitted, Depth::Omitted); });
  const SeatHeights heights = SeatInSlot(records, ZBase, slot, records.Head.EjectZOffset);

  CommandText text;
  text += Command::Move(Axis::Z, axisZ.SafePosition);
  text += Command::Move(Axis::SD_X, position.SdX1);
  text += Command::Move(Axis::SD_Y, position.SdY1);
  if (records.DeviceType.HasXAxis) {
    // X moves to its safe position before the slider opens; the slider closes at any X position.
    if (position.LowerStage) text += Command::Move(Axis::X, records.AxisX.SafePosition);
    text += position.LowerStage ? Command::MoveSliderOpen() : Command::MoveSliderClosed();
    text += Command::Move(Axis::X, position.X);
  }
  text += Command::Move(Axis::Y, position.Y);
  Skip([&] { text += Command::Move(Axis::SD_X, Add(position.SdX1, slot.OffsetX)); });
  Skip([&] { text += Command::Move(Axis::SD_Y, Add(position.SdY1, slot.OffsetY)); });
  text += Command::SetSpeed(Axis::Z, axisZ.SpeedC);
  text += Command::Move(Axis::Z, heights.ZApproach);
  text += Command::SetSpeed(Axis::Z, LastStretchSpeed);
  const bool zCollision = ReadZCollision(configuration.Files);
  if (zCollision) text += Command::ZCollisionOff();
  text += Command::Move(Axis::Z, heights.ZSeat);
  text += Command::SetSpeed(Axis::S, axisS.SpeedB);
  text += Command::Move(Axis::S, records.Head.EjectSPosition);
  text += Command::SetSpeed(Axis::S, axisS.SpeedC);
  if (zCollision) text += Command::ZCollisionOn();
  text += Command::SetSpeed(Axis::Z, axisZ.SpeedC);
  text += Command::Move(Axis::Z, axisZ.SafePosition);

  if (!host.RunCommandText(text.Text(), FailureMode::Skip)) return;
  Skip([&] { WriteInstalledHead(configuration.Files, NothingInstalled); });
  Skip([&] { host.WriteStatus(""); });
}

}  // namespace OrvelCalibrateS
