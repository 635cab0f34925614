#pragma once

#include "addin/base/Steps.h"
#include "addin/config/Configuration.h"

namespace OrvelCalibrateS {

/// Returns the first teach tool of the head list, or the record at the end of the list (its `Name` is empty). `mode`
/// decides whether a list without an end is a failure.
HeadType FindTeachTool(const Configuration& configuration, FailureMode mode);

/// Records the head as the one on the module, with no tip on it. Does nothing when the head isn't the teach tool.
void RegisterTeachTool(const IniFiles& files, const HeadType& head, FailureMode mode);

}  // namespace OrvelCalibrateS
