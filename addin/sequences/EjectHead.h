#pragma once

#include "addin/sequences/SequenceContext.h"

namespace OrvelCalibrateS {

/// Puts the selected head into its slot of the shared `Nest`, whichever was loaded last, and records that no head is
/// installed. Homes first unless that has been done. In skip mode.
void EjectHead(SequenceContext& context);

}  // namespace OrvelCalibrateS
