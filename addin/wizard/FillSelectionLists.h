#pragma once

#include "addin/sequences/SequenceContext.h"

namespace OrvelCalibrateS {

/// Loads the shared records as installed, writes the S value on record to the working value, and fills all lists; each
/// selection goes back to the installed entry. In skip mode.
void FillSelectionLists(SequenceContext& context);

}  // namespace OrvelCalibrateS
