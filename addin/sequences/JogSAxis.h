#pragma once

#include <cstdint>

#include "addin/sequences/SequenceContext.h"

namespace OrvelCalibrateS {

/// Moves S by the selected step size: 7 is Up, 8 is Down. With any other index S is driven to the working value as it
/// stands. No limit is tested. In pass-up mode.
void JogSAxis(SequenceContext& context, std::int16_t buttonIndex);

}  // namespace OrvelCalibrateS
