#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "addin/config/IniFiles.h"

namespace OrvelCalibrateS {

struct AxisRecord;
struct Configuration;

/// A pipette head. Teach tools are heads, too. Fields without a comment only mirror the file.
struct HeadType {
  std::string Index;  ///< the item number
  std::string Name;   ///< display text; empty means no such head, and ends every walk of the list
  std::string Kind;   ///< "SERIALDILUTE", "CALIBRATE" (teach tools) or "MICROTITER"
  double Field2 = 0;
  double Volume = 0;  ///< volume class: 12.5, 30, 125, 300 or 1250
  double Field4 = 0;
  std::int16_t Channels = 0;  ///< 1, 8, 12, 96 or 384
  double Field6 = 0;
  bool Flag7 = false;
  bool Flag8 = false;
  bool Flag9 = false;
  std::int32_t EjectSPosition = 0;  ///< S steps: where the S axis goes to release the head
  std::int32_t Field11 = 0;
  double EjectZOffset = 0;    ///< Z steps: added to the nest height when the head is ejected
  double CollectZOffset = 0;  ///< Z steps: added to the nest height when the head is collected
  std::string HeadCode;       ///< head shape, as named in the nest's slots
  bool Flag17 = false;
  std::int32_t SPosition = 0;  ///< S steps: the calibrated S position
  double SPositionMM = 0;      ///< mm: length of the tip eject stroke
  double TipMountDepth = 0;    ///< mm: the tip's depth while no tip is selected
  std::string Text18;
  double SDTeachToolOffset = 0;       ///< S steps, whole; 0 where the serial-dilute keys don't apply
  double SDHomeSensorSeekOffset = 0;  ///< S steps, whole
  double SDPreCollectHeight = 0;      ///< Z steps, whole
  double SDRFIDReadHeight = 0;        ///< Z steps, whole
  double SDHeadEjectOffset = 0;       ///< S steps, whole
  bool Flag19 = false;
  double Field20 = 0;
};

inline constexpr std::string_view SerialDiluteKind = "SERIALDILUTE";
inline constexpr std::string_view CalibrateKind = "CALIBRATE";
inline constexpr std::string_view MicrotiterKind = "MICROTITER";
inline constexpr std::string_view ShortOneChannelCode = "1_CH_SHORT";

/// The volume class as it is named in calibration values: "12" for 12.5, "30", "125", "300", "1250". The volume is
/// compared exactly; the text is empty for any other volume.
std::string_view VolumeClassWord(double volume);

/// Whether the head is the one-channel teach tool, which is used to calibrate the S axis.
bool IsTeachTool(const HeadType& head);

/// Whether a calibration of the S axis sets the head's S position.
bool IsCalibrated(const HeadType& head);

/// Reads the head with that item number, or the installed one when `item` is empty. The shared `ZCalibration` and axis
/// records must have been loaded. Never fails: values that aren't in the file stay empty.
HeadType ReadHeadType(const Configuration& configuration, std::string_view item = "", std::string_view file = "");

/// Writes the head's item line back; place 10 is computed again from `SPosition`. A formatting error is passed up; a
/// failed write is ignored.
void WriteHeadType(const IniFiles& files, const HeadType& head, std::string_view file);

}  // namespace OrvelCalibrateS
