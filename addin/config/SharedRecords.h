#pragma once

#include "addin/config/AxisRecord.h"
#include "addin/config/CageType.h"
#include "addin/config/DeviceType.h"
#include "addin/config/HeadType.h"
#include "addin/config/NestType.h"
#include "addin/config/TipType.h"
#include "addin/config/ZCalibration.h"

namespace OrvelCalibrateS {

/// The records that live as long as the library, one instance each. Each load replaces its record as a whole. Sequences
/// use the content of the last load.
struct SharedRecords {
  OrvelCalibrateS::ZCalibration ZCalibration;
  OrvelCalibrateS::DeviceType DeviceType;
  OrvelCalibrateS::CageType CageType;
  AxisRecord AxisX;
  AxisRecord AxisY;
  AxisRecord AxisZ;
  AxisRecord AxisS;
  AxisRecord AxisSDX;
  AxisRecord AxisSDY;
  AxisRecord AxisSDS;
  HeadType Head;
  NestType Nest;
  TipType Tip;
};

}  // namespace OrvelCalibrateS
