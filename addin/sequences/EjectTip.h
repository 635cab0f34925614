#pragma once

#include "addin/sequences/SequenceContext.h"

namespace OrvelCalibrateS {

/// Ejects the tip above the selected rack and records that no tip is installed. Goes to the rack first unless that has
/// been done, but never homes. In skip mode.
void EjectTip(SequenceContext& context);

}  // namespace OrvelCalibrateS
