#pragma once

#include <string>

namespace OrvelCalibrateS {

/// The decimal separator of the machine's locale, in UTF-8: that of the user's environment as it was at the first call,
/// and "." where that names no locale that the machine has.
const std::string& MachineDecimalSeparator();

}  // namespace OrvelCalibrateS
