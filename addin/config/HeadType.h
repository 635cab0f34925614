#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "addin/config/IniFiles.h"

namespace OrvelCalibrateS {

struct AxisRecord;
struct Configuration;

/// A pipette head, teach tools among them. Fields without a comment are held for the file's sake.
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
  std::string HeadCode;       ///< head shape, which the nest's slots name too
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

/// The volume class as calibration values name it: "12" for 12.5, "30", "125", "300", "1250"; compared exactly, empty
/// for any other volume.
std::string_view VolumeClassWord(double volume);

/// The one-channel teach tool, with which the S axis is calibrated.
bool IsTeachTool(const HeadType& head);

/// Whether a calibration of the S axis gives the head its S position.
bool IsCalibrated(const HeadType& head);

/// Reads the head of that item number, or the installed one when `item` is empty. The shared `ZCalibration` and axis
/// records must have been loaded. Never fails: what isn't in the file stays empty.
HeadType ReadHeadType(const Configuration& configuration, std::string_view item = "", std::string_view file = "");

/// Writes the head's item line back, place 10 being worked out anew from `SPosition`. In pass-up mode up to the line,
/// which is then written or not, as the file allows.
void WriteHeadType(const IniFiles& files, const HeadType& head, std::string_view file);

}  // namespace OrvelCalibrateS
