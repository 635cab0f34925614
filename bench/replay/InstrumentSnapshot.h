#pragma once

#include <nlohmann/json.hpp>
#include <vector>

#include "bench/instrument/MemoryComparison.h"
#include "bench/instrument/TrainingInstrument.h"

namespace Helmsway {

/// The members of the trace's `instrument` event, without its `event`.
nlohmann::ordered_json InstrumentSnapshot(const InstrumentView& view, const std::vector<MemoryDifference>& differences);

/// The members of the trace's `score` event, without its `event`.
nlohmann::ordered_json ScoreSnapshot(const Score& score);

/// Rounded to thousandths, which is how finely lengths, steps and seconds are told; never -0.
double Thousandths(double value);

}  // namespace Helmsway
