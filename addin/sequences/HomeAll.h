#pragma once

#include "addin/sequences/SequenceContext.h"

namespace OrvelCalibrateS {

/// Loads all shared records as installed and sends the instrument home. In pass-up mode. The caller sets `Homed`.
void HomeAll(SequenceContext& context);

}  // namespace OrvelCalibrateS
