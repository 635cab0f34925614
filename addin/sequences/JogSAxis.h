#pragma once

#include <cstdint>

#include "addin/sequences/SequenceContext.h"

namespace OrvelCalibrateS {

/// Which way a jog goes.
enum class Jog : std::uint8_t {
  None,  ///< to the working value as it is
  Up,
  Down,
};

/// Moves S by the selected step size, or to the working value. No limit is tested. In pass-up mode.
void JogSAxis(SequenceContext& context, Jog jog);

}  // namespace OrvelCalibrateS
