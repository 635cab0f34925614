#pragma once

#include "addin/sequences/SequenceContext.h"

namespace OrvelCalibrateS {

/// Brings the instrument to the selected rack, 2 mm above it, and makes the selected head's S position the working
/// value. `AtRack` becomes true unless a line was refused or failed; it also becomes true after a Stop. In skip mode.
void MoveToRack(SequenceContext& context);

}  // namespace OrvelCalibrateS
