#pragma once

#include <nlohmann/json.hpp>
#include <string>
#include <string_view>
#include <vector>

#include "forms/Surface.h"

namespace Helmsway {

/// The members of the trace's `form` event, without its `event`.
nlohmann::ordered_json FormSnapshot(const forms::ISurface& form, std::string_view statusText);

/// Names of the panels that are visible, in stacking order from the top.
std::vector<std::string_view> VisiblePanels(const forms::ISurface& form);

/// The control's name, with its index in parentheses where it has one.
std::string FullName(const forms::ControlState& control);

}  // namespace Helmsway
