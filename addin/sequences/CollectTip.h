#pragma once

#include "addin/sequences/SequenceContext.h"

namespace OrvelCalibrateS {

/// Collects a tip of the selected type from the selected rack onto the head, and records it as installed. Homes and
/// goes to the rack first unless that has been done. In skip mode.
void CollectTip(SequenceContext& context);

}  // namespace OrvelCalibrateS
