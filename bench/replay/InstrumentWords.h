#pragma once

#include <string>
#include <vector>

#include "bench/instrument/MemoryComparison.h"
#include "bench/instrument/TrainingInstrument.h"

/// The instrument in words, line by line, for people.
namespace Helmsway {

std::vector<std::string> InWords(const InstrumentView& view);
std::vector<std::string> InWords(const Score& score);
/// Whether the configuration file and the instrument's memory agree, and where they don't.
std::vector<std::string> InWords(const std::vector<MemoryDifference>& differences);

}  // namespace Helmsway
