#pragma once

#include <string_view>

#include "bench/instrument/Instrument.h"

namespace Helmsway {

/// Accepts every line at once, with an empty reply, and keeps nothing of it: its calibration memory stays empty.
class AcceptingInstrument final : public IInstrument {
 public:
  void Begin(std::string_view /*line*/) override {}
  Seconds TimeToEnd(bool /*stopRequested*/) const override { return Seconds{0}; }
  Answer End(bool /*stopRequested*/) override { return {}; }
  const CalibrationValues& CalibrationMemory() const override { return nothing_; }

 private:
  CalibrationValues nothing_;
};

}  // namespace Helmsway
