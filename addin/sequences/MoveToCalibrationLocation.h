#pragma once

#include "addin/sequences/SequenceContext.h"

namespace OrvelCalibrateS {

/// Brings the teach tool to the calibration location and S to the value on record, which becomes the working value.
/// Homes first unless that has been done. In pass-up mode.
void MoveToCalibrationLocation(SequenceContext& context);

}  // namespace OrvelCalibrateS
