#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "bench/instrument/FaultPlan.h"
#include "bench/instrument/Machine.h"
#include "bench/instrument/Score.h"
#include "bench/instrument/SeededNumbers.h"
#include "bench/instrument/SyringeDescription.h"
#include "bench/instrument/SyringeTruth.h"

namespace Helmsway {

/// What can be seen of the instrument, by eye and on the bench.
struct InstrumentView {
  MachineState machine;
  /// How far the lower edge of the teach tool's upper part stands above the ring (below: negative), in mm. Empty while
  /// the tool isn't on the module or S isn't homed.
  std::optional<double> edge;
};

/// A machine to train on: things go wrong with it by plan, the truth of its syringe axis is hidden, and the run is
/// scored.
class TrainingInstrument final : public IInstrument {
 public:
  TrainingInstrument(std::unique_ptr<IMachine> machine, SyringeDescription syringe, const TrainingSeed& seed);

  void Begin(std::string_view line) override;
  Seconds TimeToEnd(bool stopRequested) const override;
  Answer End(bool stopRequested) override;
  const CalibrationValues& CalibrationMemory() const override { return machine_->CalibrationMemory(); }

  /// Takes up another truth. False, with the truth as it was, once a line has arrived.
  bool Reseed(const TrainingSeed& seed);
  /// Adds a value to the calibration memory, as from an earlier life of the instrument: it isn't scored. False, and
  /// nothing is added, once a line has arrived.
  bool Remember(const std::string& name, const std::string& value);
  /// False, and nothing is planned, when the line of the fault's number has arrived already.
  bool Plan(Fault fault);
  /// What goes wrong with the line under way; null when nothing does.
  const Fault* FaultUnderWay() const { return fault_ ? &*fault_ : nullptr; }

  /// Somebody tries to get hold of the link. Each try in vain takes a second.
  bool TryLink();

  void PowerCycle();
  void SetRemote(bool remote) { machine_->SetRemote(remote); }
  /// What the operator does by hand goes to the machine itself.
  IMachine& Machine() { return *machine_; }

  InstrumentView Look() const;
  /// The way that the axes are going; see `IMachine`.
  std::vector<Travel> Travels() const;
  const SyringeDescription& Syringe() const { return syringe_; }
  /// The instrument's clock.
  Seconds Now() const { return machine_->Now(); }
  Score CurrentScore() const;

 private:
  /// The machine gets to see the line.
  bool LineArrives() const;
  Answer AnswerOf(bool stopRequested);
  Answer Garbled(Answer answer);
  void Follow();

  std::unique_ptr<IMachine> machine_;
  SyringeDescription syringe_;
  TrainingSeed seed_;
  SyringeTruth truth_;
  SeededNumbers garbling_;
  FaultPlan faults_;
  Tally tally_;

  std::size_t linesBegun_ = 0;
  std::string line_;  // the line under way; empty when there is none
  std::optional<Fault> fault_;
  bool saved_ = false;        // the memory is of this run
  bool carriedOut_ = false;   // the line under way, by the machine
  bool switchedOff_ = false;  // since the line began
  Seconds linkLostFor_{0};
};

}  // namespace Helmsway
