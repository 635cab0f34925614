#pragma once

#include <filesystem>
#include <string>

#include "bench/instrument/Instrument.h"

/// The simulated instrument's calibration memory between two starts of the bench: a text beside the configuration, a
/// line "NAME=VALUE" each.
namespace Helmsway::MemoryFile {

struct Contents {
  CalibrationValues values;
  std::string problem;  ///< why the file isn't used, in words; empty when it is, and when there is none
};

std::filesystem::path PathIn(const std::filesystem::path& installation);

/// All values, or none: a file with anything in it that no instrument could have been told isn't used.
Contents Read(const std::filesystem::path& file);

/// Puts the file in place in one step. Gives the reason when that fails, the file being as it was; empty otherwise.
std::string Write(const std::filesystem::path& file, const CalibrationValues& values);

}  // namespace Helmsway::MemoryFile
