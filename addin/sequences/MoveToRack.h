#pragma once

#include "addin/sequences/SequenceContext.h"

namespace OrvelCalibrateS {

/// Brings the instrument to the selected rack, 2 mm above it, and makes the selected head's S position the working
/// value. `AtRack` is True when the lines have run out, a Stop included. In skip mode.
void MoveToRack(SequenceContext& context);

}  // namespace OrvelCalibrateS
