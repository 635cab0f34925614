#pragma once

#include <vector>

#include "bench/desktop/form/FormControl.h"

namespace Helmsway {

/// A form's controls from top to bottom, and from left to right where they stand side by side; a panel is followed by
/// its contents.
std::vector<const FormControl*> ReadingOrder(const std::vector<FormControl>& controls);

}  // namespace Helmsway
