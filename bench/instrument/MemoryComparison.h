#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "bench/instrument/Instrument.h"

namespace Helmsway {

/// A calibration value for which the configuration file and the instrument's memory don't stand for the same.
struct MemoryDifference {
  std::string name;    ///< "TipEject_8Ch_125_S"
  std::string file;    ///< what a save of the file's heads as they are would have sent
  std::string memory;  ///< empty: the memory holds no value of that name

  friend bool operator==(const MemoryDifference&, const MemoryDifference&) = default;
};

/// Compares the memory with the heads in the file, by name. Of several heads of one class the last counts, as it does
/// in a save; heads without a class, and values that no head stands behind, aren't compared.
std::vector<MemoryDifference> CompareMemory(const CalibrationValues& memory, const std::filesystem::path& marivaneIni);

}  // namespace Helmsway
