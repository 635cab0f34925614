#pragma once

#include <cstdint>

#include "addin/sequences/SequenceContext.h"

namespace OrvelCalibrateS {

/// The direction of a jog.
enum class Jog : std::uint8_t {
  None,  ///< to the unchanged working value
  Up,
  Down,
};

/// Moves S by the selected step size, or to the working value. No limit is tested. In pass-up mode.
void JogSAxis(SequenceContext& context, Jog jog);

}  // namespace OrvelCalibrateS
