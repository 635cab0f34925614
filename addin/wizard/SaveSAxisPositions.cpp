#include "addin/wizard/SaveSAxisPositions.h"

#include "addin/config/Conversions.h"
#include "addin/config/ItemSource.h"
#include "addin/config/SValues.h"

namespace OrvelCalibrateS {
namespace {

constexpr std::string_view title = "Save S Axis Positions";
constexpr std::string_view question =
    "The current S Axis value will be saved and used as the initial \r\n"
    "position for all 1, 8 and 12 channel pipetting heads.\r\n"
    "\r\n"
    "This information will be stored on this computer and will\r\n"
    "also be transferred into the Marivane's memory.\r\n"
    "\r\n"
    "Click [OK] to save these values.";

/// A head whose volume has no class is saved in the file only.
void AppendCalibrationLines(CommandText& text, const HeadType& head, const AxisRecord& axisS) {
  const std::string_view volumeClass = VolumeClassWord(head.Volume);
  if (volumeClass.empty()) return;
  Skip([&] {
    text += Command::CalibrateTipEject(head.Channels, volumeClass, Divide(head.SPositionMM, axisS.MmPerStep));
  });
  text += Command::CalibrateAspirateOrigin(head.Channels, volumeClass, head.SPosition);
}

/// Writes each head concerned to the file, and collects the lines about it for the instrument.
CommandText SaveHeads(SequenceContext& context) {
  const IniFiles& files = context.Configuration.Files;
  const AxisRecord& axisS = context.Configuration.Records.AxisS;
  CommandText text;
  WalkItems(FailureMode::Skip, [&](const std::string& number) {
    HeadType head = ReadHeadType(context.Configuration, number);
    if (IsCalibrated(head)) {
      Put(head.SPosition,
          [&] { return CalibratedSPosition(head, axisS, SValueOnForm(context.Selections.txtCurrentCollect.Text())); });
      Skip([&] { WriteHeadType(files, head, files.MarivaneIni()); });
      AppendCalibrationLines(text, head, axisS);
    }
    return !head.Name.empty();
  });
  return text;
}

}  // namespace

void SaveSAxisPositions(SequenceContext& context) {
  const IniFiles& files = context.Configuration.Files;
  HostChannel& host = context.Host;

  const forms::MessageAnswer answer =
      context.Form.ShowMessage(title, question, forms::MessageButtons::OkCancel, forms::MessageIcon::Exclamation);
  if (answer != forms::MessageAnswer::Ok) return;

  Skip([&] { host.WriteStatus("Saving values..."); });
  CommandText text = SaveHeads(context);
  Skip([&] { files.WriteIni("DeviceType", "AxisCalibratedS", files.MarivaneIni(), "1"); });
  if (context.Configuration.Records.DeviceType.UploadCalibrationData) {
    text += Command::SaveCalibration();
    Skip([&] { host.WriteStatus("Updating the Marivane's memory..."); });
    // A refusal or a Stop cuts the upload short; the file keeps the new values all the same.
    host.RunCommandText(text.Text(), FailureMode::Skip);
  }
  Skip([&] { host.WriteStatus(""); });
  Skip([&] { host.WriteChanged(false); });
}

}  // namespace OrvelCalibrateS
