#pragma once

#include "addin/config/IniFiles.h"

namespace OrvelCalibrateS {

/// The heights and depths from which every Z position is worked out, in mm unless said otherwise.
struct ZCalibration {
  double MountHeight = 0;  ///< from which stage height, head depth and tip depth are taken off
  double StageHeightLower = 0;
  double StageHeightUpper = 0;
  double HeadDepth_1ch_Short = 0;
  double Headdepth_1ch_Long = 0;
  double HeadDepth_8ch = 0;
  double HeadDepth_12ch = 0;
  double HeadDepth_96_384 = 0;
  double HeadDepth_TeachTool_1Ch = 0;
  double HeadDepth_TeachTool_96_384 = 0;
  double NestDepth_Y = 0;      ///< of a device without X axis
  double NestDepth_XY_6 = 0;   ///< of a device with X axis
  double TipMountDepth12 = 0;  ///< of a head of the volume class 12.5
  double TipMountDepth30 = 0;
  double TipMountDepth125 = 0;
  double TipMountDepth300 = 0;
  double TipMountDepth1250 = 0;
  double CalibrationPlateDepth = 0;  ///< held for the file's sake
  double DeltaZ = 0;                 ///< Z motor steps, not mm: taken off a Z position behind its conversion
  double DeltaZTolerance = 0;        ///< held for the file's sake; 1000 when the key is absent
};

/// Reads all twenty values. In pass-up mode: fails, and gives no record, when the file can't be read.
ZCalibration ReadZCalibration(const IniFiles& files);

}  // namespace OrvelCalibrateS
