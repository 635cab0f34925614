#include "addin/sequences/EjectHeadToStage.h"

#include "addin/config/Calibration.h"
#include "addin/config/ConfigurationLoad.h"
#include "addin/config/Conversions.h"
#include "addin/config/Position.h"
#include "addin/sequences/DepthSteps.h"
#include "addin/sequences/TeachTool.h"

namespace OrvelCalibrateS {
namespace {

using Command::Axis;

/// Height above the stage, in mm.
constexpr std::int16_t releaseHeight = 15;

/// The installed head. When no head is registered, the teach tool is assumed to be on the module, and is registered.
HeadType HeadOnModule(const Configuration& configuration) {
  HeadType head = ReadHeadType(configuration);
  if (!head.Name.empty()) return head;
  head = FindTeachTool(configuration, FailureMode::PassUp);
  RegisterTeachTool(configuration.Files, head, FailureMode::PassUp);
  return head;
}

/// The Z position at which the head is released on a device without X axis. The quotient has single precision, the sum
/// double.
double ReleaseZ(const Configuration& configuration) {
  const AxisRecord& axisZ = configuration.Records.AxisZ;
  const float height = Multiply16(axisZ.MoveSign, releaseHeight);
  Require(axisZ.MmPerStep != 0);
  const float heightSteps = height / axisZ.MmPerStep;
  const bool lowerStage = false;
  return static_cast<double>(heightSteps) + DepthSteps(configuration, lowerStage, Depth::Counts, Depth::Omitted);
}

}  // namespace

void EjectHeadToStage(SequenceContext& context) {
  HostChannel& host = context.Host;
  const Configuration& configuration = context.Configuration;
  const SharedRecords& records = configuration.Records;

  LoadInstalledRecords(configuration, FailureMode::PassUp);
  const HeadType ejectedHead = HeadOnModule(configuration);
  const char* const stage = records.DeviceType.HasXAxis ? "STAGE6" : "STAGE2";
  const Position position = ReadPosition(configuration, "", stage);
  const Calibration calibration = ReadCalibration(configuration, "", stage);

  CommandText text;
  if (!host.StopRequested()) text += Command::HomeAll();
  if (records.AxisX.Present) text += Command::Move(Axis::X, position.X);
  if (records.AxisY.Present) text += Command::Move(Axis::Y, position.Y);
  text += Command::Move(Axis::SD_X, calibration.SdX);
  text += Command::Move(Axis::SD_Y, calibration.SdY);
  if (records.DeviceType.HasXAxis) {
    text += Command::Move(Axis::Z, records.AxisZ.SafePosition);
  } else {
    text += Command::Move(Axis::Z, ReleaseZ(configuration));
  }
  text += Command::Move(Axis::S, ejectedHead.EjectSPosition);
  text += Command::Move(Axis::Z, records.AxisZ.SafePosition);
  text += Command::Move(Axis::S, std::int32_t{0});

  host.WriteStatus("Ejecting Pipette Head");
  if (!host.RunCommandText(text.Text(), FailureMode::PassUp)) return;
  host.WriteStatus("");
}

}  // namespace OrvelCalibrateS
