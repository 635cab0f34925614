#pragma once

#include <string>

namespace OrvelCalibrateS {

/// The decimal separator of the machine's locale, in UTF-8. The user's environment at the first call selects the
/// locale; the separator is "." when the machine doesn't have that locale.
const std::string& MachineDecimalSeparator();

}  // namespace OrvelCalibrateS
