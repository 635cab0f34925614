#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace Helmsway {

/// What has to be done to the lines of `before` to get those of `after`, in the manner of a unified difference without
/// context: for each place a head "@@ -LINE,COUNT +LINE,COUNT @@", then its lines with "-" or "+" in front, without
/// line ends. Empty when the lines are the same.
std::vector<std::string> LineDifference(std::string_view before, std::string_view after);

}  // namespace Helmsway
