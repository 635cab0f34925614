#pragma once

#include <nlohmann/json.hpp>

#include "bench/instrument/TrainingInstrument.h"

namespace Helmsway {

/// The members of the trace's `instrument` event, without its `event`.
nlohmann::ordered_json InstrumentSnapshot(const InstrumentView& view);

/// The members of the trace's `score` event, without its `event`.
nlohmann::ordered_json ScoreSnapshot(const Score& score);

/// Rounded to thousandths, which is how finely lengths, steps and seconds are told; never -0.
double Thousandths(double value);

}  // namespace Helmsway
