#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "addin/config/IniFiles.h"

namespace OrvelCalibrateS {

/// Which model of the instrument this is and what it can do. Fields without a comment only mirror the file.
struct DeviceType {
  std::string Name;       ///< the item number; builds the section names of axes, positions and calibrations
  std::string Caption;    ///< display text
  bool HasXAxis = false;  ///< the model has an X axis and a slider
  std::string ItemText;
  bool UploadCalibrationData = false;  ///< a save also goes to the instrument's memory
  bool DownloadCalibrationData = false;
  bool ImportCalibrationData = false;
  bool ExportCalibrationData = false;
  bool SDXYEncoderStatus = false;         ///< selects one of the two factors below
  double SDXYEncoderMMStepFactorOn = 0;   ///< motor steps per unit of serial-dilute X and Y values, encoder on
  double SDXYEncoderMMStepFactorOff = 0;  ///< the same, encoder off
  bool CollisionDetectEnableZ = false;
  bool ZCollisionStatus = false;  ///< only mirrors the file: sequences read the key itself when they need it
  bool CollisionDetectEnableSDXY = false;
  bool SDXYCollisionStatus = false;
  std::string Firmware;             ///< a dotted version text
  std::int32_t FirmwareNumber = 0;  ///< 10203 for "1.2.3"; 0 when the text has fewer than three components
  bool AxisCalibratedXY = false;
  bool AxisCalibratedZ = false;
  bool AxisCalibratedSDXY = false;
  bool AxisCalibratedSDNest = false;
  bool AxisCalibratedS = false;
  bool MicrotiterIsCalibrated = false;
  bool SerialDiluteIsCalibrated = false;
};

/// Reads the device with that item number, or the installed one when `name` is empty; then `name` is set to its number.
/// Never fails: values that aren't in the file stay empty.
DeviceType ReadDeviceType(const IniFiles& files, std::string& name, std::string_view file = "");

/// Factor that converts serial-dilute X and Y values of the file to motor steps.
double SDXYStepFactor(const DeviceType& device);

}  // namespace OrvelCalibrateS
