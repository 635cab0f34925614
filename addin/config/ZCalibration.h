#pragma once

#include "addin/config/IniFiles.h"

namespace OrvelCalibrateS {

/// The heights and depths that every Z position is computed from, in mm unless stated otherwise.
struct ZCalibration {
  double MountHeight = 0;  ///< stage height, head depth and tip depth are subtracted from it
  double StageHeightLower = 0;
  double StageHeightUpper = 0;
  double HeadDepth_1ch_Short = 0;
  double Headdepth_1ch_Long = 0;
  double HeadDepth_8ch = 0;
  double HeadDepth_12ch = 0;
  double HeadDepth_96_384 = 0;
  double HeadDepth_TeachTool_1Ch = 0;
  double HeadDepth_TeachTool_96_384 = 0;
  double NestDepth_Y = 0;      ///< for a device without X axis
  double NestDepth_XY_6 = 0;   ///< for a device with X axis
  double TipMountDepth12 = 0;  ///< for a head of the volume class 12.5
  double TipMountDepth30 = 0;
  double TipMountDepth125 = 0;
  double TipMountDepth300 = 0;
  double TipMountDepth1250 = 0;
  double CalibrationPlateDepth = 0;  ///< held for the file's sake
  double DeltaZ = 0;                 ///< Z motor steps, not mm: subtracted from a Z position after its conversion
  double DeltaZTolerance = 0;        ///< only mirrors the file; 1000 when the key is absent
};

/// Reads all twenty values. In pass-up mode: fails, and returns no record, when the file can't be read.
ZCalibration ReadZCalibration(const IniFiles& files);

}  // namespace OrvelCalibrateS
