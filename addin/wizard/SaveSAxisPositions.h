#pragma once

#include "addin/sequences/SequenceContext.h"

namespace OrvelCalibrateS {

/// Asks the operator, then makes the working value the S position of every head that the calibration concerns: in
/// Marivane.ini, head by head, and after that in the instrument's memory. In skip mode.
void SaveSAxisPositions(SequenceContext& context);

}  // namespace OrvelCalibrateS
