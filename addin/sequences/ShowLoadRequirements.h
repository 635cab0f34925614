#pragma once

#include "addin/sequences/SequenceContext.h"

namespace OrvelCalibrateS {

/// Shows the operator what must be loaded before a head can be collected. In pass-up mode.
void ShowLoadRequirements(SequenceContext& context);

}  // namespace OrvelCalibrateS
