#pragma once

#include "addin/base/Steps.h"
#include "addin/config/Configuration.h"

namespace OrvelCalibrateS {

/// Walks the head list to the first teach tool: gives it, or the record at which the list ends (its `Name` is empty).
/// `mode` says what a list without an end means.
HeadType FindTeachTool(const Configuration& configuration, FailureMode mode);

/// Records that the head, if it is the teach tool, is on the module, and that no tip is.
void RegisterTeachTool(const IniFiles& files, const HeadType& head, FailureMode mode);

}  // namespace OrvelCalibrateS
