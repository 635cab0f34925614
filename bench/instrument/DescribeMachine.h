#pragma once

#include <filesystem>
#include <vector>

#include "bench/instrument/MachineDescription.h"

namespace Helmsway {

/// What the Marivane that a `Marivane.ini` describes knows of itself: the installed device with the axes of the
/// installed cage, serial-dilute values in motor steps, and all that can stand on its stage or hang on its module. A
/// file that is missing or doesn't say gives a machine without axes.
MachineDescription DescribeMachine(const std::filesystem::path& marivaneIni);

/// The heads as the file has them at this moment: a calibration moves their S positions.
std::vector<HeadType> ReadHeads(const std::filesystem::path& marivaneIni);

}  // namespace Helmsway
