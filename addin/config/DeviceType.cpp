#include "addin/config/DeviceType.h"

#include <tuple>

#include "addin/config/ItemSource.h"
#include "addin/config/RecordTable.h"

namespace OrvelCalibrateS {
namespace {

constexpr std::string_view section = "DeviceType";

constexpr auto rowsBeforeFirmware = std::tuple{
    Place(0, &DeviceType::Caption, Convert::CleanText{}),
    Place(1, &DeviceType::HasXAxis, Convert::Flag{}),
    Place(2, &DeviceType::ItemText, Convert::CleanText{}),
    Key("UploadCalibrationData", &DeviceType::UploadCalibrationData, Convert::Flag{}, "1"),
    Key("DownloadCalibrationData", &DeviceType::DownloadCalibrationData, Convert::Flag{}, "1"),
    Key("ImportCalibrationData", &DeviceType::ImportCalibrationData, Convert::Flag{}, "1"),
    Key("ExportCalibrationData", &DeviceType::ExportCalibrationData, Convert::Flag{}, "1"),
    Key("SDXYEncoderStatus", &DeviceType::SDXYEncoderStatus, Convert::Flag{}),
    Key("SDXYEncoderMMStepFactorOn", &DeviceType::SDXYEncoderMMStepFactorOn, Convert::Number{}),
    Key("SDXYEncoderMMStepFactorOff", &DeviceType::SDXYEncoderMMStepFactorOff, Convert::Number{}),
    Key("CollisionDetectEnableZ", &DeviceType::CollisionDetectEnableZ, Convert::NumberFlag{}),
    Key("ZCollisionStatus", &DeviceType::ZCollisionStatus, Convert::Flag{}),
    Key("CollisionDetectEnableSDXY", &DeviceType::CollisionDetectEnableSDXY, Convert::NumberFlag{}),
    Key("SDXYCollisionStatus", &DeviceType::SDXYCollisionStatus, Convert::NumberFlag{}),
    Key("Firmware", &DeviceType::Firmware, Convert::TrimmedText{}),
};

constexpr auto rowsBehindFirmware = std::tuple{
    Key("AxisCalibratedXY", &DeviceType::AxisCalibratedXY, Convert::Flag{}),
    Key("AxisCalibratedZ", &DeviceType::AxisCalibratedZ, Convert::Flag{}),
    Key("AxisCalibratedSDXY", &DeviceType::AxisCalibratedSDXY, Convert::Flag{}),
    Key("AxisCalibratedSDNest", &DeviceType::AxisCalibratedSDNest, Convert::Flag{}),
    Key("AxisCalibratedS", &DeviceType::AxisCalibratedS, Convert::Flag{}),
    Key("MicrotiterIsCalibrated", &DeviceType::MicrotiterIsCalibrated, Convert::Flag{}),
    Key("SerialDiluteIsCalibrated", &DeviceType::SerialDiluteIsCalibrated, Convert::Flag{}),
};

/// A component of the version, with at least two digits.
std::string TwoDigits(const std::string& versionPlace) {
  const std::string digits = WholeNumber(Number(versionPlace));
  return digits.size() == 1 ? "0" + digits : digits;
}

/// "1.2.3" gives 10203. Fails on fewer than three components, and outside 32 bits.
std::int32_t FirmwareNumberOf(const SplitResult& version) {
  const std::string joined = TwoDigits(version.Place(0)) + TwoDigits(version.Place(1)) + TwoDigits(version.Place(2));
  return StrictWhole<std::int32_t>(joined, ".");
}

}  // namespace

DeviceType ReadDeviceType(const IniFiles& files, std::string& name, std::string_view file) {
  const ItemSource source = FindItem(files, section, name, file, EmptyItem::Installed);
  name = source.item;

  DeviceType device;
  device.Name = source.item;
  const RowReader reader(device, files, section, source.line);
  reader.Read(rowsBeforeFirmware);
  SplitResult version;
  Put(version, [&] { return files.SplitText(".", device.Firmware); });
  Put(device.FirmwareNumber, [&] { return FirmwareNumberOf(version); });
  reader.Read(rowsBehindFirmware);
  return device;
}

double SDXYStepFactor(const DeviceType& device) {
  return device.SDXYEncoderStatus ? device.SDXYEncoderMMStepFactorOn : device.SDXYEncoderMMStepFactorOff;
}

}  // namespace OrvelCalibrateS
