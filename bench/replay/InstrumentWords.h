#pragma once

#include <string>
#include <vector>

#include "bench/instrument/TrainingInstrument.h"

/// The instrument in words, line by line, for people.
namespace Helmsway {

std::vector<std::string> InWords(const InstrumentView& view);
std::vector<std::string> InWords(const Score& score);

}  // namespace Helmsway
