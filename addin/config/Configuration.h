#pragma once

#include "addin/config/IniFiles.h"
#include "addin/config/SharedRecords.h"

namespace OrvelCalibrateS {

/// The configuration as the add-in works with it: the files, and the shared records that were last read from them.
struct Configuration {
  const IniFiles& Files;
  SharedRecords& Records;
};

}  // namespace OrvelCalibrateS
