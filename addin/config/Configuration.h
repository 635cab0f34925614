#pragma once

#include "addin/config/IniFiles.h"
#include "addin/config/SharedRecords.h"

namespace OrvelCalibrateS {

/// The add-in's configuration: the files, and the shared records that were last read from them.
struct Configuration {
  const IniFiles& Files;
  SharedRecords& Records;
};

}  // namespace OrvelCalibrateS
