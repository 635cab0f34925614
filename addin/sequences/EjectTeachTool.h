#pragma once

#include "addin/sequences/SequenceContext.h"

namespace OrvelCalibrateS {

/// Asks, then puts the teach tool into the selected nest, and records that no head is installed unless Stop cut it
/// short. Homes first unless that has been done. In skip mode.
void EjectTeachTool(SequenceContext& context);

}  // namespace OrvelCalibrateS
