#pragma once

#include <filesystem>

#include "bench/instrument/MachineDescription.h"

namespace Helmsway {

/// What the Marivane that a `Marivane.ini` describes knows of itself: the installed device with the axes of the
/// installed cage, serial-dilute limits in motor steps. A file that is missing or doesn't say gives a machine without
/// axes.
MachineDescription DescribeMachine(const std::filesystem::path& marivaneIni);

}  // namespace Helmsway
