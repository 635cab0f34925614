#pragma once

#include <string_view>

#include "bench/instrument/Instrument.h"

namespace Helmsway {

/// Accepts every line at once, with an empty reply, and keeps nothing of it: its calibration memory stays empty.
class AcceptingInstrument final : public IInstrument {
 public:
  Answer Execute(std::string_view line) override;
  const CalibrationValues& CalibrationMemory() const override;

 private:
  CalibrationValues nothing_;
};

}  // namespace Helmsway
