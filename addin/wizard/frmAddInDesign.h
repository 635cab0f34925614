#pragma once

#include <span>
#include <string_view>

#include "forms/Design.h"

namespace OrvelCalibrateS {

inline constexpr std::string_view FormDesignCaption = "Calibrate Syringe Axis";

/// The controls of `frmAddIn`, in stacking order from the top.
std::span<const forms::ControlDesign> FormDesign();

}  // namespace OrvelCalibrateS
