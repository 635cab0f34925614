#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <vector>

#include "bench/instrument/TrainingInstrument.h"
#include "bench/replay/Action.h"
#include "bench/replay/InstrumentKind.h"

namespace Helmsway {

/// The instrument of a run. It is made of the configuration file as that is when the instrument is first needed; what a
/// script says of it before is kept for it.
class InstrumentStand {
 public:
  InstrumentStand(InstrumentKind kind, std::filesystem::path marivaneIni);

  /// Made by the first call.
  IInstrument& Instrument();
  /// The same, for a run with the simulated one; a `ScriptMistake` in others.
  TrainingInstrument& Training();
  /// The simulated instrument; null while it hasn't been needed, and in a run without it.
  TrainingInstrument* TrainingIfMade() { return training_; }

  /// Empty while the instrument hasn't been needed.
  const CalibrationValues& CalibrationMemory() const;
  std::optional<Score> CurrentScore() const;

  /// Each throws `ScriptMistake` when it comes too late.
  void Seed(const Action& action);
  void Remember(const Action& action);
  void PlanFault(const Action& action);

 private:
  void Make();

  const InstrumentKind kind_;
  const std::filesystem::path marivaneIni_;
  TrainingSeed seed_;
  std::vector<Fault> planned_;  // before the instrument was made
  std::unique_ptr<IInstrument> instrument_;
  TrainingInstrument* training_ = nullptr;
};

}  // namespace Helmsway
