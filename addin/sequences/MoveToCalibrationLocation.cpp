#include "addin/sequences/MoveToCalibrationLocation.h"

#include "addin/config/Conversions.h"
#include "addin/config/SValues.h"
#include "addin/sequences/HomeAll.h"

namespace OrvelCalibrateS {
namespace {

using Command::Axis;

/// The same for every device, head and configuration.
constexpr std::string_view calibrationZ = "-16000";

/// S goes to the value of the list's first serial-dilute head, whatever head is selected. Without such a head there is
/// no line.
void AppendSLine(CommandText& text, SequenceContext& context) {
  const auto head = FindHeadOnRecord(context.Configuration, FailureMode::PassUp);
  if (!head) return;
  forms::TextBox& txtCurrentCollect = context.Selections.txtCurrentCollect;
  txtCurrentCollect.SetText(WholeNumber(SValueOnRecord(*head, context.Configuration.Records.AxisS)));
  text += Command::Move(Axis::S, std::string_view(txtCurrentCollect.Text()));
}

}  // namespace

void MoveToCalibrationLocation(SequenceContext& context) {
  HostChannel& host = context.Host;
  const SharedRecords& records = context.Configuration.Records;

  if (!context.Flags.Homed) {
    HomeAll(context);
    context.Flags.Homed = true;
  }
  host.WriteStatus("Moving to calibration location");

  CommandText text;
  if (records.DeviceType.HasXAxis) {
    std::string sliderReply;
    host.SendDeviceCommand(Command::StatusSlider(), sliderReply);
    text += Command::Move(Axis::X, records.AxisX.SafePosition);
    if (Command::SaysClosed(sliderReply)) text += Command::MoveSliderOpen();
  }
  text += Command::Move(Axis::SD_Y, records.AxisSDY.LowLimit);
  text += Command::Move(Axis::SD_X, records.AxisSDX.HighLimit / 2.0);
  text += Command::Move(Axis::Z, calibrationZ);
  AppendSLine(text, context);

  if (!host.RunCommandText(text.Text(), FailureMode::PassUp)) return;
  host.WriteStatus("");
}

}  // namespace OrvelCalibrateS
