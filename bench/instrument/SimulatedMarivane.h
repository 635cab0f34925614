#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "bench/instrument/CommandLine.h"
#include "bench/instrument/Heights.h"
#include "bench/instrument/Machine.h"
#include "bench/instrument/MachineDescription.h"
#include "bench/instrument/Safety.h"
#include "bench/instrument/Syringe.h"
#include "bench/instrument/World.h"

namespace Helmsway {

/// A Marivane that knows its state, takes its time, and refuses what it can't do and what would do harm. Carrying out a
/// line has two halves: a check when it begins, which changes nothing and gives the reason of a refusal, and behind it,
/// when it ends, the change, which can't be refused any more.
class SimulatedMarivane final : public IMachine {
 public:
  /// Switched on for the first time, in remote mode, with nothing homed and an empty calibration memory.
  explicit SimulatedMarivane(MachineDescription description);
  SimulatedMarivane(const SimulatedMarivane&) = delete;
  SimulatedMarivane& operator=(const SimulatedMarivane&) = delete;
  ~SimulatedMarivane() override = default;

  /// A line that is refused has changed nothing.
  void Begin(std::string_view line) override;
  Seconds TimeToEnd(bool stopRequested) const override;
  Answer End(bool stopRequested) override;
  const CalibrationValues& CalibrationMemory() const override { return calibrationMemory_; }

  MachineState State() const override;
  Seconds Now() const override { return now_; }
  std::vector<Travel> Travels() const override;
  void Pass(Seconds time) override { now_ += time; }
  void Stall() override;
  void PowerCycle() override;
  void Remember(const CalibrationValues& values) override { calibrationMemory_ = values; }
  void SetRemote(bool remote) override { remote_ = remote; }
  void LoadRack(const std::string& positionItem, const std::string& plateItem, const std::string& tipItem) override;
  void PutOnModule(const std::string& headItem) override;
  void PutInNest(const std::string& nestItem, const std::string& headItem) override;
  void ClearNest(const std::string& nestItem) override;
  void ClearStage(const std::string& positionName) override;

 private:
  /// A line between its two halves: a command that will be carried out, or the answer that stands already.
  struct Line {
    std::optional<Command> command;
    Answer answer;
  };

  // The checks: the reason for which the command is refused; empty when it can be carried out.
  std::string WhyNot(const Command& command) const;
  std::string WhyNot(const HomeAll& /*command*/) const { return {}; }
  std::string WhyNot(const HomeS& command) const;
  std::string WhyNot(const MoveAxis& command) const;
  std::string WhyNot(const MoveSlider& command) const;
  std::string WhyNot(const SetSpeed& command) const;
  std::string WhyNot(const SetZCollisionDetection& command) const;
  std::string WhyNot(const SetCalibration& /*command*/) const { return {}; }
  std::string WhyNot(const SaveCalibration& /*command*/) const { return {}; }
  std::string WhyNot(const AskSliderState& command) const;
  std::string WhyNot(const AskRevision& /*command*/) const { return {}; }

  // The changes: each gives the reply.
  std::string Perform(const HomeAll& command);
  std::string Perform(const HomeS& command);
  std::string Perform(const MoveAxis& command);
  std::string Perform(const MoveSlider& command);
  std::string Perform(const SetSpeed& command);
  std::string Perform(const SetZCollisionDetection& command);
  std::string Perform(const SetCalibration& command);
  std::string Perform(const SaveCalibration& command);
  std::string Perform(const AskSliderState& command) const;
  std::string Perform(const AskRevision& command) const;

  /// What Z takes up at the end of its way down.
  void TakeUp();
  /// What S lets go of at the end of its way.
  void LetGo(Syringe::Release release);

  /// Whether carrying out the command moves something, over a distance that isn't 0.
  bool ReallyMoves(const Command& command) const;
  Seconds DurationOf(const Command& command) const;
  /// The command of the line under way ends half-way.
  bool WillStall() const;
  /// Where a stalling axis is left.
  std::int32_t HalfWay(const MoveAxis& command) const;
  /// The command has ended half-way; gives what is told of it.
  std::string StallIn(const Command& command);

  std::string WhyAxisLacks(Axis axis) const;
  std::string WhySliderLacks() const;

  Seconds now_{0};
  const MachineDescription description_;
  const Heights heights_;
  World world_;
  const Safety safety_;
  const Syringe syringe_;
  CalibrationValues pending_;
  CalibrationValues calibrationMemory_;
  bool remote_ = true;
  std::optional<Line> line_;  // the line that is under way
  bool stallNext_ = false;
};

}  // namespace Helmsway
