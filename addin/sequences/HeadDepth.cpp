#include "addin/sequences/HeadDepth.h"

namespace OrvelCalibrateS {
namespace {

double OneChannelDepth(const HeadType& head, const ZCalibration& calibration) {
  if (head.HeadCode != ShortOneChannelCode) return calibration.Headdepth_1ch_Long;
  if (head.Kind == SerialDiluteKind) return calibration.HeadDepth_1ch_Short;
  if (head.Kind == CalibrateKind) return calibration.HeadDepth_TeachTool_1Ch;
  return 0;
}

double PlateHeadDepth(const HeadType& head, const ZCalibration& calibration) {
  if (head.Kind == MicrotiterKind) return calibration.HeadDepth_96_384;
  if (head.Kind == CalibrateKind) return calibration.HeadDepth_TeachTool_96_384;
  return 0;
}

}  // namespace

double HeadDepthAtStage(const HeadType& head, const ZCalibration& calibration) {
  switch (head.Channels) {
    case 0:  // no head
    case 1:
      return OneChannelDepth(head, calibration);
    case 8:
      return calibration.HeadDepth_8ch;
    case 12:
      return calibration.HeadDepth_12ch;
    case 96:
    case 384:
      return PlateHeadDepth(head, calibration);
    default:
      return 0;
  }
}

double HeadDepthInNest(const HeadType& head, const ZCalibration& calibration) {
  switch (head.Channels) {
    case 1:
      return OneChannelDepth(head, calibration);
    case 8:
      return calibration.HeadDepth_8ch;
    case 12:
      return calibration.HeadDepth_12ch;
    default:
      return 0;
  }
}

}  // namespace OrvelCalibrateS
