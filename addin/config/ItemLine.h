#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "addin/config/IniFiles.h"

namespace OrvelCalibrateS {

/// Writes the texts under the key as one item line, separated by commas, without empty places at its end. In skip mode:
/// a line that can't be written stays as it was, without any report.
void WriteItemLine(const IniFiles& files, std::string_view section, std::string_view key,
                   const std::vector<std::string>& texts, std::string_view file);

}  // namespace OrvelCalibrateS
