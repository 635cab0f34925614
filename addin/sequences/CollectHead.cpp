#include "addin/sequences/CollectHead.h"

#include "addin/config/ConfigurationLoad.h"
#include "addin/config/Conversions.h"
#include "addin/sequences/DepthSteps.h"
#include "addin/sequences/HomeAll.h"
#include "addin/sequences/InstalledKeys.h"
#include "addin/sequences/NestSeat.h"
#include "addin/sequences/SelectedRecords.h"
#include "addin/sequences/ShowLoadRequirements.h"

namespace OrvelCalibrateS {
namespace {

using Command::Axis;

/// Moves the slider for the nest's stage level if the instrument reports that the slider is in the other state.
void AppendSliderLines(CommandText& text, SequenceContext& context, const Position& position) {
  std::string reply;
  context.Host.SendDeviceCommand(Command::StatusSlider(), reply);
  const std::int32_t safeX = context.Configuration.Records.AxisX.SafePosition;
  if (Command::SaysClosed(reply) && position.LowerStage) {
    text += Command::Move(Axis::X, safeX);
    text += Command::MoveSliderOpen();
  }
  if (Command::SaysOpen(reply) && !position.LowerStage) {
    text += Command::Move(Axis::X, safeX);
    text += Command::MoveSliderClosed();
  }
}

}  // namespace

void CollectHead(SequenceContext& context) {
  HostChannel& host = context.Host;
  const Configuration& configuration = context.Configuration;
  const SharedRecords& records = configuration.Records;
  const AxisRecord& axisZ = records.AxisZ;

  if (!context.Flags.LoadPromptShown) Skip([&] { ShowLoadRequirements(context); });
  Skip([&] { HomeAll(context); });
  context.Flags.Homed = true;
  Skip([&] { host.WriteStatus("Collecting Pipette head"); });
  LoadMachineRecords(configuration, FailureMode::Skip);
  LoadSelectedNest(context);
  LoadSelectedHead(context);
  LoadSelectedTip(context);
  const NestSlot slot = SlotFor(records.Nest, records.Head.HeadCode);
  const Position position = ReadPosition(configuration, "", records.Nest.PositionName);
  std::int32_t ZBase = 0;
  Put(ZBase, [&] { return DepthSteps(configuration, position.LowerStage, Depth::Omitted, Depth::Omitted); });
  const SeatHeights heights = SeatInSlot(records, ZBase, slot, records.Head.CollectZOffset);

  CommandText text;
  text += Command::Move(Axis::Z, axisZ.SafePosition);
  if (records.DeviceType.HasXAxis) {
    AppendSliderLines(text, context, position);
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
  if (zCollision) text += Command::ZCollisionOn();
  text += Command::SetSpeed(Axis::Z, axisZ.SpeedC);
  text += Command::Move(Axis::Z, axisZ.SafePosition);

  if (!host.RunCommandText(text.Text(), FailureMode::Skip)) return;
  Skip([&] { WriteInstalledHead(configuration.Files, records.Head.Index); });
  Skip([&] { host.WriteStatus(""); });
}

}  // namespace OrvelCalibrateS
