#pragma once

#include "addin/sequences/SequenceContext.h"

namespace OrvelCalibrateS {

/// Takes the selected head out of its slot of the selected nest, and records it as installed. Homes every time. In skip
/// mode.
void CollectHead(SequenceContext& context);

}  // namespace OrvelCalibrateS
