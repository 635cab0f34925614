#pragma once

#include "addin/sequences/SequenceContext.h"

namespace OrvelCalibrateS {

/// Drops the installed head, or the teach tool if no head is registered, at the free stage position: 6 on a device with
/// X axis, 2 on one without. In pass-up mode.
void EjectHeadToStage(SequenceContext& context);

}  // namespace OrvelCalibrateS
