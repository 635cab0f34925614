#pragma once

#include <filesystem>

#include "docs/screenshots/Camera.h"

namespace Helmsway::Tour {

/// A whole calibration, panel by panel. `programs` is the folder with the add-in library.
void TakeAll(const Camera& camera, const std::filesystem::path& programs);

/// The calibration location alone, in the program's present text size and colours.
void TakeCalibrationLocation(const Camera& camera, const std::filesystem::path& programs, const QSize& size,
                             const char* picture);

}  // namespace Helmsway::Tour
