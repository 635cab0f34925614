#include "addin/config/ZCalibration.h"

#include <array>
#include <string_view>

#include "addin/config/Conversions.h"

namespace OrvelCalibrateS {
namespace {

struct Row {
  std::string_view key;
  double ZCalibration::*field;
  std::string_view defaultValue = {};
};

constexpr std::array<Row, 20> rows{{
    {"MountHeight", &ZCalibration::MountHeight},
    {"StageHeightLower", &ZCalibration::StageHeightLower},
    {"StageHeightUpper", &ZCalibration::StageHeightUpper},
    {"HeadDepth_1ch_Short", &ZCalibration::HeadDepth_1ch_Short},
    {"Headdepth_1ch_Long", &ZCalibration::Headdepth_1ch_Long},
    {"HeadDepth_8ch", &ZCalibration::HeadDepth_8ch},
    {"HeadDepth_12ch", &ZCalibration::HeadDepth_12ch},
    {"HeadDepth_96_384", &ZCalibration::HeadDepth_96_384},
    {"HeadDepth_TeachTool_1Ch", &ZCalibration::HeadDepth_TeachTool_1Ch},
    {"HeadDepth_TeachTool_96_384", &ZCalibration::HeadDepth_TeachTool_96_384},
    {"NestDepth_Y", &ZCalibration::NestDepth_Y},
    {"NestDepth_XY_6", &ZCalibration::NestDepth_XY_6},
    {"TipMountDepth12", &ZCalibration::TipMountDepth12},
    {"TipMountDepth30", &ZCalibration::TipMountDepth30},
    {"TipMountDepth125", &ZCalibration::TipMountDepth125},
    {"TipMountDepth300", &ZCalibration::TipMountDepth300},
    {"TipMountDepth1250", &ZCalibration::TipMountDepth1250},
    {"CalibrationPlateDepth", &ZCalibration::CalibrationPlateDepth},
    {"DeltaZ", &ZCalibration::DeltaZ},
    {"DeltaZTolerance", &ZCalibration::DeltaZTolerance, "1000"},
}};

}  // namespace

ZCalibration ReadZCalibration(const IniFiles& files) {
  ZCalibration calibration;
  for (const Row& row : rows) {
    calibration.*row.field = Number(files.ReadIni("Z_Calibration", row.key, files.MarivaneIni(), row.defaultValue));
  }
  return calibration;
}

}  // namespace OrvelCalibrateS
