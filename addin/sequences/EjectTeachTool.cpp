#include "addin/sequences/EjectTeachTool.h"

#include "addin/config/ConfigurationLoad.h"
#include "addin/config/Conversions.h"
#include "addin/sequences/DepthSteps.h"
#include "addin/sequences/InstalledKeys.h"
#include "addin/sequences/NestSeat.h"
#include "addin/sequences/SelectedRecords.h"
#include "addin/sequences/TeachTool.h"

namespace OrvelCalibrateS {
namespace {

using Command::Axis;

/// Speed of Z with the teach tool on its way to the nest, and afterwards; in the instrument's own unit.
constexpr std::int32_t teachToolSpeed = 1000;

bool OperatorAgrees(SequenceContext& context) {
  const std::string nest(context.Selections.cboNestType.Text());
  const std::string text = "This feature will eject the teach tool to the " + nest +
                           "\r\n"
                           "Please ensure that the nest is empty and doesn't contain any pipette heads.\r\n"
                           "\r\n"
                           "Click [OK] to continue or [Cancel] to cancel this process.";
  return context.Form.ShowMessage("Eject Teach Tool", text, forms::MessageButtons::OkCancel,
                                  forms::MessageIcon::Exclamation) != forms::MessageAnswer::Cancel;
}

NestType SelectedNest(const SequenceContext& context) {
  NestType LocalNest;
  Put(LocalNest, [&] { return ReadNestType(context.Configuration, SelectedItem(context.Selections.cboNestType)); });
  return LocalNest;
}

/// The tool's seat in its slot, in Z steps. In skip mode: each assignment is a step of its own. The depth is always the
/// teach tool's, whatever is registered as installed, and there is no last stretch.
std::int32_t EjectHeight(const SharedRecords& records, std::int32_t ZBase, const NestSlot& slot, double zOffset) {
  const double s = records.AxisZ.MmPerStep;
  const std::int16_t m = records.AxisZ.MoveSign;
  const std::int16_t o = records.AxisZ.OffsetSign;
  const double toolDepth = records.ZCalibration.HeadDepth_TeachTool_1Ch;

  std::int32_t z = 0;
  std::int32_t ZEject = 0;
  Put(z, [&] { return Rounded<std::int32_t>(ZBase + WholeNumberTerm(Divide(NestDepth(records), s) * m)); });
  Put(z, [&] { return Rounded<std::int32_t>(z + WholeNumberTerm(Multiply(slot.ZHeight, m))); });
  Put(z, [&] { return Rounded<std::int32_t>(z + WholeNumberTerm(Divide(toolDepth, s) * m)); });
  Put(ZEject, [&] { return Rounded<std::int32_t>(z + WholeNumberTerm(zOffset * o)); });
  return ZEject;
}

}  // namespace

void EjectTeachTool(SequenceContext& context) {
  HostChannel& host = context.Host;
  const Configuration& configuration = context.Configuration;
  const SharedRecords& records = configuration.Records;
  const AxisRecord& axisZ = records.AxisZ;

  if (!OperatorAgrees(context)) return;
  LoadInstalledRecords(configuration, FailureMode::Skip);
  const NestType LocalNest = SelectedNest(context);
  const Position position = ReadPosition(configuration, "", LocalNest.PositionName);
  const HeadType TeachHead = FindTeachTool(configuration, FailureMode::Skip);
  if (TeachHead.Name.empty()) return;
  HomeUnlessHomed(context);
  std::int32_t ZBase = 0;
  Put(ZBase, [&] { return DepthSteps(configuration, position.LowerStage, Depth::Omitted, Depth::Omitted); });
  const NestSlot& slot = SlotFor(LocalNest, ShortOneChannelCode);
  const std::int32_t ZEject = EjectHeight(records, ZBase, slot, TeachHead.EjectZOffset);

  CommandText text;
  text += Command::Move(Axis::Z, axisZ.SafePosition);
  if (records.DeviceType.HasXAxis) {
    text += Command::Move(Axis::X, records.AxisX.SafePosition);
    text += Command::MoveSliderClosed();
    text += Command::Move(Axis::X, position.X);
  }
  text += Command::Move(Axis::Y, position.Y);
  text += Command::Move(Axis::Z, axisZ.SafePosition);
  Skip([&] { text += Command::Move(Axis::SD_X, Add(position.SdX1, slot.OffsetX)); });
  Skip([&] { text += Command::Move(Axis::SD_Y, Add(position.SdY1, slot.OffsetY)); });
  text += Command::SetSpeed(Axis::Z, teachToolSpeed);
  text += Command::Move(Axis::Z, ZEject);
  text += Command::Move(Axis::S, TeachHead.EjectSPosition);
  text += Command::Move(Axis::Z, axisZ.SafePosition);
  text += Command::Move(Axis::S, std::int32_t{0});

  // Only a Stop keeps the tool registered, however the run ended. When the flag can't be read any more, the value that
  // the run read last counts.
  bool stopRequested = false;
  host.RunCommandText(text.Text(), FailureMode::Skip, stopRequested);
  Put(stopRequested, [&] { return host.StopRequested(); });
  if (!stopRequested) Skip([&] { WriteInstalledHead(configuration.Files, NothingInstalled); });
}

}  // namespace OrvelCalibrateS
