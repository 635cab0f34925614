#include "addin/sequences/MoveToRack.h"

#include "addin/config/ConfigurationLoad.h"
#include "addin/config/Conversions.h"
#include "addin/sequences/DepthSteps.h"
#include "addin/sequences/RackRecords.h"
#include "addin/sequences/SelectedRecords.h"

namespace OrvelCalibrateS {
namespace {

using Command::Axis;

struct SdPair {
  std::int32_t x = 0;
  std::int32_t y = 0;
};

SdPair SdPairFor(std::int16_t channels, const Position& position) {
  switch (channels) {
    case 1:
      return {position.SdX1, position.SdY1};
    case 8:
      return {position.SdX8, position.SdY8};
    case 12:
      return {position.SdX12, position.SdY12};
    default:
      return {};
  }
}

}  // namespace

void MoveToRack(SequenceContext& context) {
  HostChannel& host = context.Host;
  const Configuration& configuration = context.Configuration;
  const SharedRecords& records = configuration.Records;

  Skip([&] { host.WriteStatus("Moving to rack"); });
  LoadMachineRecords(configuration, FailureMode::Skip);
  LoadSelectedHead(context);
  LoadSelectedTip(context);
  Skip([&] {
    context.Selections.txtCurrentCollect.SetText(
        WholeNumber(records.AxisS.MoveSign * records.Head.SDTeachToolOffset + records.Head.SPosition));
  });
  const Position position = SelectedPosition(context);
  const PlateType plate = SelectedTipRack(context);
  const SdPair sd = SdPairFor(records.Head.Channels, position);
  std::int32_t depth = 0;
  Put(depth, [&] { return DepthSteps(configuration, position.LowerStage, Depth::Counts, Depth::Counts); });

  CommandText text;
  if (records.DeviceType.HasXAxis) {
    text += Command::Move(Axis::X, records.AxisX.SafePosition);
    text += position.LowerStage ? Command::MoveSliderOpen() : Command::MoveSliderClosed();
    text += Command::Move(Axis::X, position.X);
  }
  text += Command::Move(Axis::Y, position.Y);
  text += Command::Move(Axis::SD_X, sd.x);
  text += Command::Move(Axis::SD_Y, sd.y);
  text += Command::Move(Axis::S, records.Head.SPosition);
  Skip([&] { text += Command::Move(Axis::Z, depth + ClearanceSteps(plate, records.AxisZ)); });

  if (!host.RunCommandText(text.Text(), FailureMode::Skip)) return;
  Skip([&] { host.WriteStatus(""); });
  context.Flags.AtRack = true;
}

}  // namespace OrvelCalibrateS
