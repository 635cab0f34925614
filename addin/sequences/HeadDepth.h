#pragma once

#include "addin/config/HeadType.h"
#include "addin/config/ZCalibration.h"

namespace OrvelCalibrateS {

/// A head's own depth in mm, by its family. The two look-ups differ for the record of no head (0 channels) and for the
/// heads of 96 and 384 channels; a head of any other number of channels has the depth 0 in both.
double HeadDepthAtStage(const HeadType& head, const ZCalibration& calibration);
double HeadDepthInNest(const HeadType& head, const ZCalibration& calibration);

}  // namespace OrvelCalibrateS
